#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <iterator>

#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/xlsx/saved_check.h"
#include "adapters/workbook/xlsx/workbook_reader.h"
#include "adapters/workbook/xlsx/workbook_writer.h"
#include "automation/runtime_error.h"
#include "spreadsheet/charts/chart_layout.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "workbook/chart_models.h"
#include "workbook/chart_settings.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using namespace workbook;

class ChartFiles : public WorkbookFiles {
 protected:
  // Saved and loaded again, with nothing lost.
  std::shared_ptr<Book> Reread(const Book& book) const {
    WriteWorkbook(book, File());
    CheckSaved(book, File());
    const std::string bytes = BytesOf(File());
    LoadedBook loaded = ReadWorkbook(bytes, {});
    EXPECT_THAT(loaded.losses, IsEmpty());
    return loaded.book;
  }

  static const Chart& FirstChart(const Book& book) { return *book.sheets.front()->charts.all.front(); }
};

TEST_F(ChartFiles, KeepEveryFieldOfEveryKind) {
  for (const ChartKind* kind : kChartKinds) {
    for (const auto& [name, make] : ChartSettings()) {
      SCOPED_TRACE(std::string(name) + ", " + std::string(kind->group));
      const auto book = BookWithHistory(20);
      Chart& chart = AddChart(book->sheets.front(), 4, 22);
      chart.kind = kind;
      make(chart);
      const auto read = Reread(*book);
      ASSERT_THAT(read->sheets.front()->charts.all, SizeIs(1));
      EXPECT_EQ(Description(FirstChart(*read)), Description(chart));
    }
  }
}

TEST_F(ChartFiles, KeepEveryKindOfLine) {
  for (const std::int32_t style : {1, 4, 5, 13, -4115, -4118, -4119}) {
    for (const std::int32_t weight : {1, 2, 4, -4138}) {
      SCOPED_TRACE(std::to_string(style) + ", " + std::to_string(weight));
      const auto book = BookWithHistory(1);
      Chart& chart = AddChart(book->sheets.front(), 4, 3);
      chart.plot_border = {Look::Own, style, weight, 0x123456};
      EXPECT_EQ(FirstChart(*Reread(*book)).plot_border, chart.plot_border);
    }
  }
}

TEST_F(ChartFiles, KeepEveryMarker) {
  for (const std::int32_t marker : {1, 2, 3, 5, 8, 9, -4105, -4115, -4118, -4142, -4168}) {
    SCOPED_TRACE(marker);
    const auto book = BookWithHistory(1);
    Chart& chart = AddChart(book->sheets.front(), 4, 3);
    chart.kind = &kLineKind;
    chart.series.front().marker = marker;
    EXPECT_EQ(FirstChart(*Reread(*book)).series.front().marker, marker);
  }
}

TEST_F(ChartFiles, KeepChartsOfSeveralSheetsInTheirPiles) {
  const auto book = BookWithHistory(20);
  AddTickerCharts(book->sheets.front(), 20);
  book->AddSheet();  // in front, without charts
  const auto other = book->AddSheet();
  AddChart(other, 1, 9).series.front().sheet = book->sheets.back();
  for (int i = 0; i < 11; ++i) AddChart(book->sheets.back(), 5, 9).place.left = i * 48;

  const auto read = Reread(*book);
  ASSERT_THAT(read->sheets, SizeIs(3));
  for (std::size_t i = 0; i < 3; ++i) {
    const auto& charts = book->sheets[i]->charts;
    const auto& charts_read = read->sheets[i]->charts;
    ASSERT_EQ(charts_read.all.size(), charts.all.size());
    EXPECT_EQ(charts_read.made, charts.made);
    for (std::size_t k = 0; k < charts.all.size(); ++k)
      EXPECT_EQ(Description(*charts_read.all[k]), Description(*charts.all[k]));
  }
  EXPECT_EQ(read->sheets.front()->charts.all.front()->series.front().sheet.lock(), read->sheets.back());
}

TEST_F(ChartFiles, KeepPlacesAmongColumnsAndRowsOfEverySize) {
  // Comments on rows of their own heights make the writer keep all rows in memory.
  for (const bool has_comment : {false, true}) {
    const auto book = BookWithHistory(20);
    Sheet& sheet = *book->sheets.front();
    sheet.widths.Set(1, 2, {100, false});
    sheet.widths.Set(4, 6, {20, true});
    sheet.heights.Set(1, 1, {33.75, false});
    sheet.heights.Set(3, 8, {7.2, false});
    sheet.heights.Set(10, 12, {0, true});
    if (has_comment) sheet.comments.Set(1, 1, {.text = "x", .author = ""});
    for (const double place : {0.0, 74.25, 150.0, 333.0, 2000.25}) {
      Chart& chart = AddChart(book->sheets.front(), 4, 22);
      chart.place = {place, place, 200.25, 75.75};
    }
    const auto read = Reread(*book);
    for (std::size_t i = 0; i < sheet.charts.all.size(); ++i)
      EXPECT_EQ(read->sheets.front()->charts.all[i]->place, sheet.charts.all[i]->place);
  }
}

TEST_F(ChartFiles, MoveChartsBackOntoTheSheet) {
  const auto book = BookWithHistory(1);
  AddChart(book->sheets.front(), 4, 3).place = {-10, 1e9, 100, 100};
  const ChartBox place = FirstChart(*Reread(*book)).place;
  EXPECT_EQ(place.left, 0);
  EXPECT_EQ(place.width, 90);
  EXPECT_EQ(place.top, kRows * 15.0);
}

TEST_F(ChartFiles, HoldTheValuesForProgramsThatDoNotCompute) {
  const auto book = BookWithHistory(4);
  Sheet& sheet = *book->sheets.front();
  sheet.cells.Set(4, 4, CellValue::OfText("n/a"));
  sheet.cells.Set(5, 4, CellValue());
  sheet.cells.Set(6, 4, CellValue(CellError::DivisionByZero));
  AddChart(book->sheets.front(), 4, 8);
  WriteWorkbook(*book, File());
  EXPECT_THAT(Unzip(BytesOf(File()))["xl/charts/chart1.xml"],
              HasSubstr("<c:numCache><c:formatCode>General</c:formatCode><c:ptCount val=\"6\"/>"
                        "<c:pt idx=\"0\"><c:v>28.35</c:v></c:pt><c:pt idx=\"1\"><c:v>0</c:v></c:pt>"
                        "<c:pt idx=\"3\"><c:v>#N/A</c:v></c:pt></c:numCache>"));
}

TEST_F(ChartFiles, LeaveTheValuesOfVeryLongSeriesToTheCells) {
  const auto book = BookWithHistory(4);
  AddChart(book->sheets.front(), 4, kRows);
  WriteWorkbook(*book, File());
  EXPECT_THAT(Unzip(BytesOf(File()))["xl/charts/chart1.xml"], Not(HasSubstr("numCache")));
}

TEST_F(ChartFiles, AreTheSameWhenSavedTwice) {
  const auto book = BookWithHistory(20);
  AddTickerCharts(book->sheets.front(), 20);
  const auto once = Reread(*book);
  const std::string bytes = Unzip(BytesOf(File()))["xl/charts/chart1.xml"];
  const auto twice = Reread(*once);
  EXPECT_EQ(Unzip(BytesOf(File()))["xl/charts/chart1.xml"], bytes);
  for (std::size_t i = 0; i < 2; ++i)
    EXPECT_EQ(Description(*twice->sheets.front()->charts.all[i]),
              Description(*once->sheets.front()->charts.all[i]));
}

TEST_F(ChartFiles, LeaveAllOtherPartsAsTheyAre) {
  const auto book = BookWithHistory(20);
  WriteWorkbook(*book, File());
  Parts plain = Unzip(BytesOf(File()));
  AddTickerCharts(book->sheets.front(), 20);
  WriteWorkbook(*book, File());
  Parts with_charts = Unzip(BytesOf(File()));
  // When it was made.
  for (Parts* parts : {&plain, &with_charts}) parts->erase("docProps/core.xml");
  for (const char* changed : {"[Content_Types].xml", kSheetPart}) plain.erase(changed);
  for (const auto& [name, text] : plain) EXPECT_EQ(with_charts[name], text) << name;
}

TEST_F(ChartFiles, ReplaceTheOldFileAsAWhole) {
  const auto book = BookWithHistory(20);
  AddTickerCharts(book->sheets.front(), 20);
  WriteBytes(File(), "old");
  std::filesystem::permissions(File(),
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  ReplaceFile(File(), [&](const std::filesystem::path& fresh) {
    WriteWorkbook(*book, fresh);
    EXPECT_EQ(BytesOf(File()), "old");
    EXPECT_THAT(FolderListing(), SizeIs(3)) << "beside the old file the lock, and the new one's folder";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(fresh.parent_path()), {}), 1)
        << "no further file was left";
  });
  EXPECT_EQ(std::filesystem::status(File()).permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  CheckSaved(*book, File());
  EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
}

TEST_F(ChartFiles, KeepTheOldFileWhenTheDiskIsFull) {
  const auto book = BookWithHistory(5);
  auto& points = AddChart(book->sheets.front(), 4, 7).series.front().points;
  for (std::int32_t i = 0; i < 2000; ++i)
    points.push_back({{}, {Look::Own, i * 7919 % 0xFFFFFF}, {Look::Own, i * 104729 % 0xFFFFFF}});
  const auto save = [&] {
    ReplaceFile(File(), [&](const std::filesystem::path& fresh) { WriteWorkbook(*book, fresh); });
  };
  save();
  const auto size = static_cast<rlim_t>(std::filesystem::file_size(File()));
  WriteBytes(File(), "old");
  for (const rlim_t missing : {100U, 4000U}) {  // room for the file without what its chart says
    ChildProcess child([&](const ChildProcess::Test& test) {
      std::signal(SIGXFSZ, SIG_IGN);
      const rlimit limit{size - missing, size - missing};
      if (setrlimit(RLIMIT_FSIZE, &limit) == 0) test.Report(NumberOf(save));
    });
    std::int32_t error = 0;
    EXPECT_TRUE(child.Read(error));
    EXPECT_TRUE(child.Finish());
    EXPECT_EQ(error, 61);
    EXPECT_TRUE(BytesOf(File()) == "old");
    EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
  }
}

TEST_F(ChartFiles, AreMissedWhenTheyDoNotReadBack) {
  const auto book = BookWithHistory(20);
  WriteWorkbook(*book, File());
  AddTickerCharts(book->sheets.front(), 20);
  EXPECT_THROW(CheckSaved(*book, File()), RuntimeError) << "all";
  WriteWorkbook(*book, File());
  const auto& charts = book->sheets.front()->charts.all;
  charts.front()->title->text = "First";
  EXPECT_THROW(CheckSaved(*book, File()), RuntimeError) << "a title";
  charts.front()->title->text = "Last";
  CheckSaved(*book, File());
  charts.back()->series.front().values->last_row = 9;
  EXPECT_THROW(CheckSaved(*book, File()), RuntimeError) << "cells";
}

TEST_F(ChartFiles, AreRefusedWhenTheyAreTooManyToBeLoadedAgain) {
  const auto book = BookWithHistory(1);
  AddChart(book->sheets.front(), 4, 3).series.resize(LoadLimits().chart_series + 1);
  EXPECT_THROW(WriteWorkbook(*book, File()), RuntimeError);
}

TEST_F(ChartFiles, KeepTheTitleWithinTheChart) {
  const auto book = BookWithHistory(20);
  AddTickerCharts(book->sheets.front(), 20);
  Chart& chart = *book->sheets.front()->charts.all.front();
  chart.title->left = 1000;
  chart.plot_place = ChartBox{100, 0, 300, 70};
  const ChartBox title = TitleBox(chart);
  ASSERT_LT(title.left + title.width, chart.place.width + 0.001);
  const auto read = Reread(*book);
  EXPECT_NEAR(*FirstChart(*read).title->left, title.left, 1e-9);
  EXPECT_NEAR(*FirstChart(*read).title->top, title.top, 1e-9);
  EXPECT_EQ(FirstChart(*read).plot_place, PlotBox(chart));
}

TEST_F(ChartFiles, KeepChartSheets) {
  const auto book = BookWithHistory(20);
  AddTickerCharts(book->sheets.front(), 20);
  book->AddSheet();
  const auto empty = book->AddChartSheet();
  const auto prices = book->AddChartSheet();
  prices->name = "Prices & more";
  prices->kind = &kLineKind;
  prices->title.emplace().left = 33;
  prices->series.emplace_back().values = Area{3, 4, 9, 4};
  prices->series.front().sheet = book->sheets.back();
  book->front_chart = empty;

  const auto read = Reread(*book);
  ASSERT_THAT(read->chart_sheets, SizeIs(2));
  EXPECT_EQ(Description(*read->chart_sheets[0]), Description(*empty));
  EXPECT_EQ(Description(*read->chart_sheets[1]), Description(*prices));
  EXPECT_EQ(read->front_chart, read->chart_sheets[0]);
  EXPECT_THAT(read->sheets.back()->charts.all, SizeIs(2));

  book->BringToFront(*book->sheets.back());
  const auto with_sheet_in_front = Reread(*book);
  EXPECT_EQ(with_sheet_in_front->front_chart, nullptr);
  EXPECT_EQ(with_sheet_in_front->active, 1u);
}

}  // namespace
}  // namespace mirelo::testing
