// One new chart.

#include "charts/build_test.h"
#include "host/excel/chart_object.h"
#include "host/excel/font.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AddChart : public BuildTest {
 protected:
  AddChart() { OpenForCharts(); }
  ~AddChart() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  std::shared_ptr<Chart> Add(XlChartType type = xlLineMarkers, bool x_axis = false, bool y_axis = false) {
    return form.Add_Chart("My title", "Quotes_Vertical(A)", "$B$3:$B$12", "no range", "nor this", x_axis,
                          y_axis, type);
  }
};

TEST_F(AddChart, EntersItsRoutineUnderItsName) {
  EXPECT_THAT(Traces([this] { Add(); }),
              ElementsAre("Entered Mirelo.frmMirelo.Add_Chart", "Exited Mirelo.frmMirelo.Add_Chart"));
}

TEST_F(AddChart, PutsAChartOfItsTypeOnTheSheet) {
  for (const XlChartType type : {xlLineMarkers, xlColumnClustered}) {
    const auto chart = Add(type);
    EXPECT_EQ(chart->ChartType(), type);
    const auto holder = std::dynamic_pointer_cast<ChartObject>(chart->Parent());
    EXPECT_EQ(holder->Parent()->Name(), "Quotes_Vertical(A)");
  }
  EXPECT_EQ(ChartsOn(*Table("A")).size(), 2U);
  EXPECT_EQ(book->Charts()->Count(), 0);
}

TEST_F(AddChart, ShowsTheSourceRange) { EXPECT_EQ(RowsShown(*Add(), *Table("A"), kPrice), RowRange(3, 12)); }

TEST_F(AddChart, TurnsTheAxesOnAndOff) {
  for (const bool x_axis : {false, true}) {
    for (const bool y_axis : {false, true}) {
      const auto chart = Add(xlLineMarkers, x_axis, y_axis);
      EXPECT_EQ(chart->HasAxis(xlCategory, xlPrimary), x_axis);
      EXPECT_EQ(chart->HasAxis(xlValue, xlPrimary), y_axis);
    }
  }
}

TEST_F(AddChart, HasSmallTickLabelsOnAValueAxis) {
  const auto labels = Add(xlLineMarkers, false, true)->Axes(xlValue, xlPrimary)->TickLabels();
  EXPECT_FALSE(labels->AutoScaleFont());
  EXPECT_EQ(labels->Font()->Size().ToDouble(), 8);
}

TEST_F(AddChart, HasASmallTitleAndNoLegend) {
  const auto chart = Add();
  EXPECT_FALSE(chart->HasLegend());
  ASSERT_TRUE(chart->HasTitle());
  EXPECT_EQ(chart->ChartTitle()->Text(), "My title");
  EXPECT_FALSE(chart->ChartTitle()->Font()->Bold().ToBoolean());
  EXPECT_EQ(chart->ChartTitle()->Font()->Size().ToDouble(), 8);
  EXPECT_FALSE(chart->ChartTitle()->AutoScaleFont());
}

TEST_F(AddChart, FramesThePlotAndDotsItsGridlines) {
  for (const bool y_axis : {false, true}) {
    const auto chart = Add(xlColumnClustered, false, y_axis);
    const auto frame = chart->PlotArea()->Border();
    EXPECT_EQ(frame->ColorIndex().ToInt32(), 56);
    EXPECT_EQ(frame->Weight().ToInt32(), xlThin);
    EXPECT_EQ(frame->LineStyle().ToInt32(), xlContinuous);
    ASSERT_TRUE(chart->Axes(xlValue, xlPrimary)->HasMajorGridlines());
    const auto line = chart->Axes(xlValue, xlPrimary)->MajorGridlines()->Border();
    EXPECT_EQ(line->ColorIndex().ToInt32(), 16);
    EXPECT_EQ(line->Weight().ToInt32(), xlHairline);
    EXPECT_EQ(line->LineStyle().ToInt32(), xlDot);
  }
}

TEST_F(AddChart, LeavesTheFirstCellOfTheSheetSelected) {
  sheets->Item("Dovanta2_Quotes")->Select();
  Add();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Quotes_Vertical(A)");
  EXPECT_EQ(application->ActiveCell()->Address(), "$A$1");
  EXPECT_EQ(application->Selection()->TypeName(), "Range");
}

}  // namespace
}  // namespace mirelo::testing
