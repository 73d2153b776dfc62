// Sheets of a person's own that nobody changes stay as they stand in the file.

#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <set>
#include <string>

#include "adapters/workbook/xlsx/checked_writer.h"
#include "adapters/workbook/xlsx/sheet_changes.h"
#include "host/excel/comment.h"
#include "host/excel/constants.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/shape.h"
#include "workbook/calc_document.h"
#include "workbook/chart_models.h"
#include "workbook/kept_sheets.h"
#include "workbook/script.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::StartsWith;
using workbook::Spreadsheet;

TEST_F(KeptSheets, StandInTheFileByteForByte) {
  auto spreadsheet = OpenPersons();
  const Parts before = PartsOf(File());
  AddTable(spreadsheet);
  spreadsheet.Save(File());
  Parts after = PartsOf(File());

  // One tab is selected, and it is another one now.
  EXPECT_THAT(after["xl/worksheets/sheet1.xml"], HasSubstr("tabSelected=\"0\""));
  ReplaceIn(after["xl/worksheets/sheet1.xml"], "tabSelected=\"0\"", "tabSelected=\"1\"");
  const std::set<std::string> changed{"xl/workbook.xml", "xl/_rels/workbook.xml.rels", "xl/styles.xml",
                                      "[Content_Types].xml", "_rels/.rels"};
  std::size_t kept = 0;
  for (const auto& [name, text] : before) {
    if (changed.contains(name)) continue;
    ASSERT_TRUE(after.contains(name)) << name;
    EXPECT_EQ(after[name], text) << name;
    ++kept;
  }
  EXPECT_GE(kept, 19u) << "sheets, drawings, charts, pictures, comments, tables and the theme";
}

TEST_F(KeptSheets, AreForOthersWhatTheyWere) {
  auto spreadsheet = OpenPersons();
  const auto before = RunScript("check_sheets_of_a_person.py", File());
  ASSERT_GT(before.size(), 50u);
  AddTable(spreadsheet);
  spreadsheet.Save(File());
  EXPECT_THAT(RunScript("check_sheets_of_a_person.py", File()), IsSupersetOf(before));
}

TEST_F(KeptSheets, AreOpenedByCalcWhichComputesThem) {
  auto spreadsheet = OpenPersons();
  AddTable(spreadsheet);
  spreadsheet.Save(File());
  ConvertWithCalc(File(), "ods");
  const Parts parts = PartsOf(File("quotes.ods"));
  const CalcDocument document(parts);
  EXPECT_THAT(document.Sheets(), ElementsAre(kTable, "Portfolio", "Notes", "Hidden", "Prices over time"));
  EXPECT_EQ(document.At("Portfolio", 1, 1).text, "What I hold");
  EXPECT_EQ(document.At("Portfolio", 3, 4).value, "2835");
  EXPECT_TRUE(document.At("Portfolio", 3, 4).has_formula);
  EXPECT_EQ(document.At("Portfolio", 5, 4).value, "5008.25") << "which uses a defined name";
  EXPECT_EQ(document.At("Notes", 1, 1).value, "5008.25") << "which refers to another sheet";
  EXPECT_EQ(document.At("Portfolio", 3, 1).comment, "bought 1999");
  EXPECT_EQ(document.At(kTable, 3, 1).text, "<MSFT> & \"co\"");
  EXPECT_EQ(document.At(kTable, 3, 2).text, "+ 28.3500");
  EXPECT_EQ(document.Property(document.At(kTable, 2, 1), "fo:background-color"), "#666699");
  std::size_t charts = 0;
  bool has_picture = false;
  for (const auto& [name, text] : parts) {
    if (name.ends_with("/content.xml") && text.find("chart:chart") != std::string::npos) ++charts;
    has_picture = has_picture || name.starts_with("Pictures/");
  }
  EXPECT_EQ(charts, 2u);
  EXPECT_TRUE(has_picture);
}

TEST_F(KeptSheets, LoseNothing) {
  auto spreadsheet = OpenPersons();
  EXPECT_THAT(spreadsheet.Losses(), IsEmpty());
  const auto table = AddTable(spreadsheet);
  EXPECT_THAT(spreadsheet.Losses(), IsEmpty());
  SheetNamed(spreadsheet, "Notes")->Select();
  SheetNamed(spreadsheet, "Notes")->Range("B2")->Select();
  EXPECT_THAT(spreadsheet.Losses(), IsEmpty()) << "what is selected is no change";
  spreadsheet.Save(File());
  EXPECT_EQ(SheetOf(Spreadsheet::Open(File()))->Name(), "Notes") << "which is in front now";
}

TEST_F(KeptSheets, StandBesideTablesThatAreWrittenAnew) {
  {
    auto spreadsheet = OpenPersons();
    ExpectTable(*AddTable(spreadsheet));
    spreadsheet.Save(File());
  }
  auto spreadsheet = Spreadsheet::Open(File());
  ASSERT_EQ(SheetOf(spreadsheet)->Name(), kTable);
  ExpectTable(*SheetOf(spreadsheet));
  EXPECT_TRUE(SheetOf(spreadsheet)->Range("A9")->Value().IsEmpty());
  EXPECT_EQ(BookOf(spreadsheet)->Worksheets()->Count(), 4);
  EXPECT_EQ(SheetNamed(spreadsheet, "Portfolio")->Index(), 2);

  SheetOf(spreadsheet)->Range("B3")->Value(29.0);
  EXPECT_THAT(spreadsheet.Losses(), IsEmpty()) << "the table has nothing to lose";
  spreadsheet.Save(File());
  EXPECT_EQ(SheetOf(Spreadsheet::Open(File()))->Range("B3")->Text(), "+ 29.0000");
}

TEST_F(KeptSheets, DoNotGrowTheFileWithEachSaving) {
  auto spreadsheet = OpenPersons();
  AddTable(spreadsheet);
  spreadsheet.Save(File());
  const Parts first = PartsOf(File());
  spreadsheet.Save(File());
  EXPECT_EQ(PartsOf(File()), first) << "saved again";
  for (int day = 0; day < 3; ++day) {
    auto next = Spreadsheet::Open(File());
    SheetNamed(next, kTable)->Range("B3")->Value(double{30} + day);
    next.Save(File());
  }
  Parts last = PartsOf(File());
  EXPECT_EQ(last["xl/styles.xml"], Parts(first)["xl/styles.xml"]);
  EXPECT_EQ(last.size(), first.size());
}

TEST_F(KeptSheets, KeepNamesOfTheirOwnWhereverTheyStand) {
  auto spreadsheet = OpenPersons();
  AddTable(spreadsheet);
  spreadsheet.Save(File());
  const std::string workbook = PartsOf(File())["xl/workbook.xml"];
  EXPECT_THAT(workbook, HasSubstr("<definedName name=\"Rate\">Portfolio!$F$1</definedName>"));
  EXPECT_THAT(workbook, HasSubstr("<definedName name=\"_xlnm.Print_Area\" localSheetId=\"1\""));
  EXPECT_THAT(workbook, HasSubstr("activeTab=\"0\""));
  EXPECT_THAT(workbook, HasSubstr("fullCalcOnLoad=\"1\""));
  EXPECT_THAT(workbook, HasSubstr("veryHidden"));
}

TEST_F(KeptSheets, AreNoLongerKeptOnceTheyAreChanged) {
  const struct {
    const char* what;
    std::function<void(host::excel::Worksheet&)> change;
    std::function<bool(host::excel::Worksheet&)> is_there;
  } cases[] = {
      {"a value", [](auto& sheet) { sheet.Range("B3")->Value(200.0); },
       [](auto& sheet) { return sheet.Range("B3")->Value() == Variant(200.0); }},
      {"a value taken away", [](auto& sheet) { sheet.Range("B3")->ClearContents(); },
       [](auto& sheet) { return sheet.Range("B3")->Value().IsEmpty(); }},
      {"a format", [](auto& sheet) { sheet.Range("B3")->NumberFormat("0.000"); },
       [](auto& sheet) { return sheet.Range("B3")->NumberFormat() == Variant("0.000"); }},
      {"a format of an empty cell", [](auto& sheet) { sheet.Range("J90")->Interior()->ColorIndex(6); },
       [](auto& sheet) { return sheet.Range("J90")->Interior()->ColorIndex() == Variant(6); }},
      {"a comment", [](auto& sheet) { sheet.Range("B3")->AddComment("mine"); },
       [](auto& sheet) { return sheet.Range("B3")->Comment() != nullptr; }},
      {"the size of a comment",
       [](auto& sheet) { sheet.Range("A3")->Comment()->Shape()->ScaleWidth(2, host::excel::msoFalse); },
       [](auto& sheet) { return sheet.Range("A3")->Comment()->Shape()->Width() > 150; }},
      {"a condition",
       [](auto& sheet) {
         sheet.Range("B3")->FormatConditions()->Add(host::excel::xlCellValue, host::excel::xlLess, "0");
       },
       [](auto& sheet) { return sheet.Range("B3")->FormatConditions()->Count() == 1; }},
      {"rows taken out", [](auto& sheet) { sheet.Rows("3")->Delete(host::excel::xlShiftUp); },
       [](auto& sheet) { return sheet.Range("A3")->Value() == Variant("IBM"); }},
  };
  for (const auto& [what, change, is_there] : cases) {
    SCOPED_TRACE(what);
    auto spreadsheet = OpenPersons();
    change(*SheetNamed(spreadsheet, "Portfolio"));
    EXPECT_THAT(spreadsheet.Losses(), Contains("Sheet \"Portfolio\": not kept: merged cells."));
    EXPECT_THAT(spreadsheet.Losses(), Not(Contains(HasSubstr("\"Notes\""))));
    EXPECT_THAT(spreadsheet.Losses(), Not(Contains(HasSubstr("Workbook"))));
    spreadsheet.Save(File());
    EXPECT_TRUE(is_there(*SheetNamed(Spreadsheet::Open(File()), "Portfolio")));
    EXPECT_THAT(spreadsheet.Losses(), IsEmpty()) << "once they are suffered";
    EXPECT_THAT(PartsOf(File())["xl/worksheets/sheet2.xml"], HasSubstr("sheetProtection")) << "of Notes";
  }
}

TEST_F(KeptSheets, WouldLoseAPersonsWorkByAChangeAndTellOfThatAlone) {
  auto spreadsheet = OpenPersons();
  const auto work = spreadsheet.WorkLostByChange("portfolio");
  EXPECT_THAT(work, Contains(HasSubstr("not kept: formulas")));
  for (const char* loss : {"merged cells", "data validation"})
    EXPECT_THAT(work, Contains("Sheet \"Portfolio\": not kept: " + std::string(loss) + "."));
  EXPECT_THAT(work, Each(StartsWith("Sheet \"Portfolio\""))) << "of no other sheet";
  for (const char* look : {"print settings", "page headers and footers", "view settings"})
    EXPECT_THAT(work, Not(Contains(HasSubstr(look))));
  EXPECT_THAT(spreadsheet.WorkLostByChange("nowhere"), IsEmpty());

  EXPECT_THAT(spreadsheet.NewLosses(), IsEmpty()) << "nothing has changed";
  SheetNamed(spreadsheet, "Portfolio")->Range("B3")->Value(200.0);
  EXPECT_THAT(spreadsheet.WorkLostByChange("Portfolio"), IsEmpty()) << "it is lost by now";
  const auto losses = spreadsheet.NewLosses();
  EXPECT_THAT(losses, IsSupersetOf(work)) << "who asked was told nothing";
  EXPECT_THAT(losses, Contains("Sheet \"Portfolio\": not kept: page headers and footers."));
}

TEST_F(KeptSheets, AreAllWrittenAnewWhereOthersWouldMissSomething) {
  const struct {
    const char* what;
    std::function<void(const Spreadsheet&)> change;
  } cases[] = {{"a sheet that formulas know by its name",
                [](const auto& s) { SheetNamed(s, "Portfolio")->Name("Shares"); }},
               {"a sheet whose table formulas know",
                [](const auto& s) { SheetNamed(s, "Notes")->Range("B3")->Value(2.0); }}};
  for (const auto& [what, change] : cases) {
    SCOPED_TRACE(what);
    auto spreadsheet = OpenPersons();
    change(spreadsheet);
    const auto losses = spreadsheet.Losses();
    for (const char* loss : {"Sheet \"Portfolio\": not kept: merged cells.",
                             "Sheet \"Notes\": not kept: tables.", "Workbook: not kept: defined names."})
      EXPECT_THAT(losses, Contains(loss));
    spreadsheet.Save(File());
    EXPECT_FALSE(PartsOf(File()).contains("xl/tables/table1.xml"));
    EXPECT_THAT(Spreadsheet::Open(File()).Losses(), IsEmpty());
  }
}

TEST_F(KeptSheets, StandBesideChartsThatAreWrittenAnew) {
  OpenPersons();
  const std::string text = BytesOf(File());
  const std::vector<char> bytes(text.begin(), text.end());
  const workbook::LoadedBook loaded = workbook::ReadWorkbook(bytes, {});
  const workbook::Origin origin(bytes, {}, loaded);
  const auto history = loaded.book->AddSheet();
  for (std::int32_t row = 1; row <= 20; ++row) history->cells.Set(row, 1, spreadsheet::CellValue(row * 1.5));
  AddTickerCharts(history, 20);
  const auto kept = origin.KeptSheets(*loaded.book);
  ASSERT_TRUE(kept.has_value());
  EXPECT_EQ(kept->size(), 3u);
  EXPECT_EQ(workbook::WriteCheckedCarrying(*loaded.book, origin, *kept, File()), "");

  const auto lines = RunScript("check_sheets_of_a_person.py", File());
  EXPECT_THAT(lines, Contains(history->name + " 'charts' " + std::to_string(history->charts.all.size())));
  EXPECT_THAT(lines, Contains("Portfolio 'charts' 1"));
  EXPECT_TRUE(PartsOf(File()).contains("xl/drawings/drawing3.xml")) << "drawings 1 and 2 are the person's";
}

TEST_F(KeptSheets, MayHaveChartsThatFollowCellsOfAnotherSheet) {
  auto spreadsheet = OpenPersons();
  AddTable(spreadsheet);
  spreadsheet.Save(File());
  const std::string text = BytesOf(File());
  const std::vector<char> bytes(text.begin(), text.end());
  const workbook::LoadedBook loaded = workbook::ReadWorkbook(bytes, {});
  const auto portfolio = loaded.book->FindSheet("Portfolio");
  const auto table = loaded.book->FindSheet(kTable);
  workbook::Chart loaded_chart;
  loaded_chart.series.emplace_back();
  loaded_chart.series.front().values = spreadsheet::Area{3, 2, 9, 2};
  loaded_chart.series.front().sheet = table;
  workbook::Chart chart = loaded_chart;
  const auto is_unchanged = [&] { return workbook::IsUnchanged(chart, loaded_chart, portfolio->name); };
  EXPECT_TRUE(is_unchanged());
  chart.series.front().values = spreadsheet::Area{3, 2, 8, 2};
  EXPECT_TRUE(is_unchanged()) << "a row went";
  chart.series.front().values.reset();
  EXPECT_TRUE(is_unchanged()) << "all went";
  chart.series.front().values = spreadsheet::Area{3, 2, 10, 2};
  EXPECT_FALSE(is_unchanged()) << "somebody chose more";
  chart.series.front().values = spreadsheet::Area{3, 3, 9, 3};
  EXPECT_FALSE(is_unchanged()) << "somebody chose others";
  chart = loaded_chart;
  chart.series.front().sheet = loaded_chart.series.front().sheet = portfolio;
  chart.series.front().values = spreadsheet::Area{3, 2, 8, 2};
  EXPECT_FALSE(is_unchanged()) << "its own sheet was changed";
  chart = loaded_chart;
  chart.legend = !chart.legend;
  EXPECT_FALSE(is_unchanged());
}

}  // namespace
}  // namespace mirelo::testing
