// What the routines of charts do about statements that fail.

#include "charts/build_test.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ChartFailures : public BuildTest {
 protected:
  ChartFailures() { OpenForCharts(); }
  ~ChartFailures() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  // A chart without the title that the routines count on.
  std::shared_ptr<Chart> UntitledChart() {
    return NewChartOf(*application, *Table("A"), "B3:B7", "", xlLineMarkers);
  }
  void MendTitle(const std::shared_ptr<Chart>& chart) {
    Mend([chart] { chart->HasTitle(true); });
  }
  static bool IsTag(Chart& chart) { return chart.ChartTitle()->Interior()->ColorIndex().ToInt32() == 15; }
};

// Build_Charts

TEST_F(ChartFailures, BuildChartsOnceTheTickersSheetIsThere) {
  Answers({"RETRY"});
  Mend([this] { AddTable("D"); });
  Build({"A", "D"});
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmMirelo.Build_Charts"));
  EXPECT_EQ(Titles("A"), kBoth);
  EXPECT_EQ(Titles("D"), kBoth);
}

TEST_F(ChartFailures, BuildNoMoreChartsWhenAMissingSheetIsAborted) {
  Answers({"ABORT"});
  Build({"A", "D", "B"});
  EXPECT_EQ(Titles("A"), kBoth);
  EXPECT_THAT(Charts("B"), IsEmpty());
}

// The sheet of the ticker before stays the one that is worked on, and its new charts are asked about.
TEST_F(ChartFailures, BuildTheChartsOfTheTickerBeforeOnceMoreWhenAMissingSheetIsIgnored) {
  Answers({"IGNORE"});
  desktop.answers = {host::Desktop::Answer::Yes};
  Build({"A", "D", "B"});
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_EQ(desktop.boxes.size(), 1U);
  EXPECT_EQ(Titles("A"), kBoth);
  EXPECT_EQ(Titles("B"), kBoth);
}

TEST_F(ChartFailures, ReportATickersSheetThatIsAChart) {
  book->Charts()->Add()->Name("Quotes_Vertical(D)");
  Answers({"ABORT"});
  Build({"D"});
  EXPECT_THAT(ReportedErrors(), ElementsAre(13));
}

TEST_F(ChartFailures, BuildWithASettingOnceItCanBeRead) {
  Damage("AddYAxis");
  Answers({"RETRY"});
  Mend([] { Save("AddYAxis", 1); });
  Build({"A"});
  EXPECT_THAT(ReportedErrors(), ElementsAre(ErrorNumber(0x80044284)));
  EXPECT_TRUE(Charts("A")[0]->HasAxis(xlValue, xlPrimary));
}

TEST_F(ChartFailures, BuildWithoutASettingWhenThatIsIgnored) {
  Damage("AddYAxis");
  Answers({"IGNORE"});
  Build({"A"});
  EXPECT_EQ(Titles("A"), kBoth);
  EXPECT_FALSE(Charts("A")[0]->HasAxis(xlValue, xlPrimary));
}

TEST_F(ChartFailures, BuildNothingWithoutASettingWhenThatIsAborted) {
  Damage("AddYAxis");
  Answers({"ABORT"});
  Build({"A"});
  EXPECT_THAT(Charts("A"), IsEmpty());
}

// More points than 16 bits count.
TEST_F(ChartFailures, ReportATooLongChartAsAnOverflow) {
  Save("ChartPoints", 40000);
  Answers({"ABORT"});
  Build({"A"});
  EXPECT_THAT(ReportedErrors(), ElementsAre(6));
}

// GiveSheetLimits measures the quote table's sheet. Its abort raises nothing, so all rows count as being
// below the limit then.
TEST_F(ChartFailures, ShowTheFirstRowsToComeWhenTheSheetCouldNotBeMeasured) {
  sheets->Item("Dovanta2_Quotes")->Name("Other");
  FillColumn(*Table("A"), kPrice, std::vector<double>(50, 1));
  Answers({"ABORT"});
  Build({"A"});
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmMirelo.GiveSheetLimits"));
  EXPECT_EQ(RowsShown(*Charts("A")[0], *Table("A"), kPrice), RowRange(3, 21));
}

TEST_F(ChartFailures, ReportTickersThatAreNoArray) {
  Answers({"ABORT"});
  form.Build_Charts("A");
  EXPECT_THAT(ReportedErrors(), ElementsAre(13));
}

// Add_Chart

TEST_F(ChartFailures, LeaveTheChartUnplacedWhenItsMakingIsAborted) {
  Answers({"ABORT"});
  EXPECT_EQ(form.Add_Chart("Last", "Quotes_Vertical(A)", "no range", "", "", false, false, xlLineMarkers),
            nullptr);
  EXPECT_THAT(ReportedErrors(), ElementsAre(1004));
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmMirelo.Add_Chart"));
}

TEST_F(ChartFailures, MakeAChartWithoutDataWhenABadRangeIsIgnored) {
  Answers({"IGNORE"});
  const auto chart =
      form.Add_Chart("Last", "Quotes_Vertical(A)", "no range", "", "", false, false, xlLineMarkers);
  ASSERT_NE(chart, nullptr);
  EXPECT_EQ(chart->ChartTitle()->Text(), "Last");
}

TEST_F(ChartFailures, MakeAChartOnceItsSheetIsThere) {
  Answers({"RETRY"});
  Mend([this] { AddTable("D"); });
  form.Add_Chart("Last", "Quotes_Vertical(D)", "B3:B7", "", "", false, false, xlLineMarkers);
  EXPECT_THAT(Titles("D"), ElementsAre("Last"));
}

// Move_And_Resize_Chart

TEST_F(ChartFailures, PlaceTheTitleOnceThereIsOne) {
  const auto chart = UntitledChart();
  std::string name;
  Answers({"RETRY"});
  MendTitle(chart);
  form.Move_And_Resize_Chart(chart, name, 76, 10.0, 4, 20);
  EXPECT_THAT(ReportedErrors(), ElementsAre(1004));
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmMirelo.Move_And_Resize_Chart"));
  EXPECT_GT(chart->ChartTitle()->Top(), 76 / 2);
  EXPECT_TRUE(IsTag(*chart));
}

TEST_F(ChartFailures, LeaveTheTitlesHeightWhenThatIsIgnored) {
  const auto chart = UntitledChart();
  std::string name;
  Answers({"IGNORE"});
  MendTitle(chart);
  form.Move_And_Resize_Chart(chart, name, 76, 10.0, 4, 20);
  EXPECT_LT(chart->ChartTitle()->Top(), 76 / 2);
  EXPECT_GT(chart->ChartTitle()->Left(), 200 / 2);
  EXPECT_TRUE(IsTag(*chart));
}

TEST_F(ChartFailures, MakeTheWholeChartWideWhenATooHighPlotIsIgnored) {
  const auto chart = UntitledChart();
  chart->HasTitle(true);
  std::string name;
  Answers({"IGNORE"});
  form.Move_And_Resize_Chart(chart, name, 3277, 10.0, 4, 20);
  EXPECT_THAT(ReportedErrors(), ElementsAre(6));
  EXPECT_NEAR(chart->PlotArea()->Width(), 200, 8);
  EXPECT_TRUE(IsTag(*chart));
}

TEST_F(ChartFailures, ReportAChartThatIsGone) {
  const auto chart = UntitledChart();
  ChartShapesOn(*Table("A")).back()->Delete();
  std::string name;
  Answers({"ABORT"});
  form.Move_And_Resize_Chart(chart, name, 76, 10.0, 4, 20);
  EXPECT_THAT(ReportedErrors(), ElementsAre(1004));
}

// Change_Colors

TEST_F(ChartFailures, PaintTheTitleOnceThereIsOne) {
  const auto chart = UntitledChart();
  Answers({"RETRY"});
  MendTitle(chart);
  facade->Change_Colors(chart, 0, 1, "Blue");
  EXPECT_THAT(ReportedErrors(), ElementsAre(1004));
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.cMirelo.Change_Colors"));
  EXPECT_EQ(chart->ChartTitle()->Interior()->ColorIndex().ToInt32(), 10);
  EXPECT_EQ(chart->SeriesCollection(1)->MarkerSize(), 6);
}

TEST_F(ChartFailures, PaintTheRestWhenTheTitleIsIgnored) {
  const auto chart = UntitledChart();
  Answers({"IGNORE", "IGNORE"});
  facade->Change_Colors(chart, 0, 1, "Blue");
  EXPECT_THAT(ReportedErrors(), ElementsAre(1004, 1004));
  EXPECT_THAT(PointsOf(*chart), ElementsAre(kStay, kRise, kRise, kRise, kRise));
}

TEST_F(ChartFailures, PaintNoMoreWhenTheTitleIsAborted) {
  const auto chart = UntitledChart();
  const std::int32_t marker = chart->SeriesCollection(1)->MarkerSize();
  Answers({"ABORT"});
  EXPECT_TRUE(facade->Change_Colors(chart, 0, 1, "Blue").IsEmpty());
  EXPECT_EQ(chart->ChartArea()->Fill()->ForeColor()->SchemeColor(), 47);
  EXPECT_EQ(chart->SeriesCollection(1)->MarkerSize(), marker);
}

TEST_F(ChartFailures, ReportStylesOfAnotherNameAtTheFirstColor) {
  const auto chart = UntitledChart();
  for (const char* style : {"None", "", "blue", "Red"}) {
    desktop.reports.clear();
    Answers({"ABORT"});
    facade->Change_Colors(chart, 0, 0, style);
    EXPECT_THAT(ReportedErrors(), ElementsAre(9)) << style;
  }
}

TEST_F(ChartFailures, ReportAChartWithoutASeries) {
  const auto chart = book->Charts()->Add();
  Answers({"ABORT"});
  facade->Change_Colors(chart, 0, 0, "Blue");
  EXPECT_THAT(ReportedErrors(), ElementsAre(1004));
}

}  // namespace
}  // namespace mirelo::testing
