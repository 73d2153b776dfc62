// The charts of a working day of streamed quotes, which follow their tables.

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "day/day_charts.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/chart_parts.h"
#include "host/excel/constants.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/sheet.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "scenarios/stream_day.h"

namespace mirelo::testing {
namespace {

namespace excel = host::excel;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class ChartedDay : public StreamDay {
 protected:
  ChartedDay() {
    wishes.settings = {
        {"UpdateEvery", "1"},   {"Seconds", "0"},    {"ComQuoteSource", "Alpstein Finance (delayed)"},
        {"VerticalTable", "1"}, {"RowsLimit", "50"}, {"BuildCharts", "1"},
        {"ChartStyle", "Blue"}, {"ChartPoints", "5"}};
    wishes.columns.push_back("Change");
    wishes.ticks.push_back({"MSFT", "Charts"});
  }

  std::shared_ptr<excel::Chart> Chart(const std::string& title) {
    const auto shapes = spreadsheet.Application()->Worksheets()->Item(History("MSFT"))->Shapes();
    for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
      if (shapes->Item(i)->Type() != excel::msoChart) continue;
      auto chart = shapes->Item(i)->Chart();
      if (chart->HasTitle() && chart->ChartTitle()->Text() == title) return chart;
    }
    throw std::logic_error("no chart " + title);
  }
  std::vector<std::string> Shown(const std::string& title) {
    const Variant values = Chart(title)->SeriesCollection(1)->Values();
    const VariantArray& points = values.AsArray();
    std::vector<std::string> texts;
    for (std::int32_t i = points.LBound(); i <= points.UBound(); ++i) texts.push_back(points(i).ToText());
    return texts;
  }
};

TEST_F(ChartedDay, ShowsTheLastPointsOfTheHistory) {
  BeginStreaming();
  for (int step = 1; step <= 9; ++step) Quote(Trade(20 + step, 1000 + 10 * step));
  EXPECT_THAT(Shown("Last"), ElementsAre("25", "26", "27", "28", "29"));
  EXPECT_THAT(Shown("LastVolume"), ElementsAre("10", "10", "10", "10", "10"));
}

TEST_F(ChartedDay, EndsPlotsAboveTheirLabels) {
  BeginStreaming();
  for (const char* title : {"Last", "LastVolume"}) {
    SCOPED_TRACE(title);
    const auto plot = Chart(title)->PlotArea();
    const double label = Chart(title)->ChartTitle()->Top();
    EXPECT_GT(label, 40) << "it stands at the foot";
    EXPECT_EQ(plot->Top() + plot->Height(), label);
  }
}

TEST_F(ChartedDay, KeepsChartsBesideATableThatGetsWider) {
  BeginStreaming();
  const auto sheet = spreadsheet.Application()->Worksheets()->Item(History("MSFT"));
  const auto left_of_charts = [&] {
    const auto shapes = sheet->Shapes();
    std::vector<double> lefts;
    for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
      if (shapes->Item(i)->Type() == excel::msoChart) lefts.push_back(shapes->Item(i)->Left());
    }
    return lefts;
  };
  const auto end_of_table = [&] {
    std::int32_t column = 1;
    while (!sheet->Cells(2, column)->Value().IsEmpty()) ++column;
    return sheet->Cells(2, column)->Left();
  };
  const double before = end_of_table();
  Quote(Trade(123456789.25, 1000));
  EXPECT_GT(end_of_table(), before);
  EXPECT_THAT(left_of_charts(), ElementsAre(end_of_table(), end_of_table()));
}

TEST_F(ChartedDay, ColoursByTheChangeOfTheLastTwoQuotes) {
  BeginStreaming();
  const auto title_after = [&](double earlier, double latest) {
    Quote(Trade(20 + earlier, 2000).Change(earlier));
    Quote(Trade(20 + latest, 2001).Change(latest));
    return Chart("Last")->ChartTitle()->Interior()->ColorIndex().ToInt32();
  };
  EXPECT_EQ(title_after(0.5, -0.25), 10) << "the one before had risen";
  EXPECT_EQ(title_after(-0.75, 0.25), 53) << "the one before had fallen";
}

TEST_F(ChartedDay, LeavesInFrontWhatWasThere) {
  BeginStreaming();
  const std::string front = spreadsheet.Application()->ActiveSheet()->Name();
  Quote(Trade(28, 1000));
  EXPECT_EQ(spreadsheet.Application()->ActiveSheet()->Name(), front);
}

TEST_F(ChartedDay, GoesOnWhereChartsCannotFollow) {
  BeginStreaming();
  const auto sheets = spreadsheet.Application()->Worksheets();
  const std::string front = spreadsheet.Application()->ActiveSheet()->Name();
  sheets->Item(History("MSFT"))->Cells(2, 2)->Value("Volumes of mine");
  Quote(Trade(28, 1000));
  EXPECT_THAT(told.back(), HasSubstr("Charts stand still at Quotes_Vertical(MSFT): "));
  EXPECT_EQ(spreadsheet.Application()->ActiveSheet()->Name(), front);
  Quote(Trade(29, 1100));
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("28", "29"));
}

TEST_F(ChartedDay, FollowsAgainWhenWhatKeptItsChartsHasGone) {
  BeginStreaming();
  const auto field = spreadsheet.Application()->Worksheets()->Item(History("MSFT"))->Cells(2, 2);
  field->Value("Volumes of mine");
  Quote(Trade(21, 1000));
  field->Value("LastVolume");
  for (int step = 2; step <= 9; ++step) Quote(Trade(20 + step, 1000 + 10 * step));
  EXPECT_THAT(told.back(), "Charts follow again at Quotes_Vertical(MSFT)");
  EXPECT_THAT(Shown("Last"), ElementsAre("25", "26", "27", "28", "29"));
}

TEST_F(ChartedDay, LeavesChartsAloneThatHaveFailedToFollowOftenEnough) {
  BeginStreaming();
  const auto field = spreadsheet.Application()->Worksheets()->Item(History("MSFT"))->Cells(2, 2);
  field->Value("Volumes of mine");
  int quotes = 0;
  while (day->Tables().HasCharts() && quotes < 1000) Quote(Trade(++quotes, 1000));
  EXPECT_EQ(quotes, day::DayCharts::kMostFailures + 127) << "1 + 2 + 4 ... that were waited for between them";
  EXPECT_THAT(told.back(),
              HasSubstr("Charts stand still for the rest of the day at Quotes_Vertical(MSFT): "));
  field->Value("LastVolume");
  for (int more = 0; more < 200; ++more) Quote(Trade(++quotes, 1000));
  EXPECT_THAT(told, Not(Contains(HasSubstr("Charts follow again"))));
}

class DayOfTwoCharts : public ChartedDay {
 protected:
  DayOfTwoCharts() {
    for (const char* tick : {"Last", "LastVolume", "Charts"}) wishes.ticks.push_back({"IBM", tick});
  }
};

TEST_F(DayOfTwoCharts, TellsOfOnesThatStandStillAfterOthersThatWereGivenUp) {
  BeginStreaming();
  const auto sheets = spreadsheet.Application()->Worksheets();
  sheets->Item(History("MSFT"))->Cells(2, 2)->Value("Volumes of mine");
  for (int quotes = 1; quotes <= day::DayCharts::kMostFailures + 127; ++quotes) Quote(Trade(quotes, 1000));
  ASSERT_THAT(told.back(), HasSubstr("for the rest of the day at Quotes_Vertical(MSFT): "));
  sheets->Item(History("IBM"))->Cells(2, 2)->Value("Volumes of mine");
  Quote(Of("IBM").Last(160).Volume(1000).Stamp("01202011093000"));
  EXPECT_THAT(told.back(), HasSubstr("Charts stand still at Quotes_Vertical(IBM): "));
}

}  // namespace
}  // namespace mirelo::testing
