// Where a new chart goes, and how large it and its parts are.

#include "charts/build_test.h"
#include "host/excel/interior.h"
#include "host/excel/window.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Places are whole pixels.
constexpr double kPixel = 0.75;

class MoveAndResizeChart : public BuildTest {
 protected:
  static constexpr std::int16_t kPlace = 5;
  static constexpr double kWidth = 200;

  MoveAndResizeChart() {
    OpenForCharts();
    sheet = Table("A");
  }

  std::shared_ptr<Chart> NewChart(bool value_axis = false) {
    const auto chart = NewChartOf(*application, *sheet, "B3:B12", "Last", xlLineMarkers);
    chart->HasAxis(xlValue, xlPrimary, value_axis);
    return chart;
  }
  std::string Place(const std::shared_ptr<Chart>& chart, std::int16_t height = 76) {
    std::string name;
    EXPECT_TRUE(form.Move_And_Resize_Chart(chart, name, height, 10.0, kPlace, 20).IsEmpty());
    return name;
  }
  // A new chart of this height, placed: its shape.
  std::shared_ptr<Shape> Placed(std::int16_t height = 76) {
    const auto chart = NewChart();
    Place(chart, height);
    return ChartShapesOn(*sheet).back();
  }

  void ExpectAt(Shape& shape, double left, double top) {
    EXPECT_NEAR(shape.Left(), left, kPixel / 2);
    EXPECT_NEAR(shape.Top(), top, kPixel / 2);
  }
  double PlaceLeft() { return sheet->Cells(1, kPlace)->Left(); }
  double VisibleHeight() {
    sheet->Select();
    return application->ActiveWindow()->VisibleRange()->Height();
  }

  std::shared_ptr<Worksheet> sheet;
};

TEST_F(MoveAndResizeChart, EntersItsRoutineUnderItsName) {
  const auto chart = NewChart();
  EXPECT_THAT(Traces([&] { Place(chart); }), ElementsAre("Entered Mirelo.frmMirelo.Move_And_Resize_Chart",
                                                         "Exited Mirelo.frmMirelo.Move_And_Resize_Chart"));
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(MoveAndResizeChart, DoesNothingForANullChart) {
  NewChart();
  const auto shape = ChartShapesOn(*sheet).back();
  const double left = shape->Left();
  EXPECT_EQ(Place(nullptr), "");
  EXPECT_EQ(shape->Left(), left);
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(MoveAndResizeChart, TellsTheChartsNameWithoutItsNumber) {
  EXPECT_EQ(Place(NewChart()), "Chart");
  sheet->Name("Two words");
  EXPECT_EQ(Place(NewChart()), "Chart");
}

// Places

TEST_F(MoveAndResizeChart, PutsTheFirstChartAtTheTopOfThePlaceColumn) { ExpectAt(*Placed(), PlaceLeft(), 0); }

TEST_F(MoveAndResizeChart, FollowsTheWidthOfTheColumnsBeforeThePlace) {
  sheet->Range("A2")->Value("A header that is wider than the column used to be");
  const double before = PlaceLeft();
  sheet->Columns("A")->AutoFit();
  ASSERT_GT(PlaceLeft(), before);
  ExpectAt(*Placed(), PlaceLeft(), 0);
}

TEST_F(MoveAndResizeChart, PutsTheSecondChartDirectlyBelowTheFirst) {
  const auto first = Placed();
  first->Left(first->Left() + 30);
  first->Top(9);
  ExpectAt(*Placed(), PlaceLeft() + 30, 9 + 76);
}

TEST_F(MoveAndResizeChart, PutsChartsInAColumnAsLongAsTheyCanBeSeen) {
  const double height = VisibleHeight();
  double left = PlaceLeft();
  double top = 0;
  std::int32_t columns = 1;
  for (int i = 0; i < 30; ++i) {
    SCOPED_TRACE(i);
    const auto shape = Placed();
    ExpectAt(*shape, left, top);
    left = shape->Left();
    top = shape->Top() + 76;
    if (height < top + 76) {
      left += kWidth;
      top = 0;
      ++columns;
    }
  }
  EXPECT_GT(columns, 2);
}

TEST_F(MoveAndResizeChart, PutsAChartThatReachesBelowWhatIsSeenOneWidthToTheRight) {
  const auto tall = static_cast<std::int16_t>(VisibleHeight() + 1);
  const auto fitting = static_cast<std::int16_t>(VisibleHeight());
  ExpectAt(*Placed(tall), PlaceLeft() + kWidth, 0);
  ChartShapesOn(*sheet).back()->Delete();
  ExpectAt(*Placed(fitting), PlaceLeft(), 0);
}

// Comments float over the sheet as charts do.
TEST_F(MoveAndResizeChart, PassesOverShapesThatAreNoCharts) {
  sheet->Range("B2")->AddComment("Charts (Last & Volume)");
  const auto first = Placed();
  sheet->Range("C2")->AddComment("Charts (Last & Volume)");
  ExpectAt(*first, PlaceLeft(), 0);
  ExpectAt(*Placed(), PlaceLeft(), 76);
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(MoveAndResizeChart, IsAsHighAsToldAndAsWideAsItsPoints) {
  const auto shape = Placed();
  EXPECT_NEAR(shape->Height(), 76, kPixel / 2);
  EXPECT_NEAR(shape->Width(), kWidth, kPixel / 2);
}

TEST_F(MoveAndResizeChart, LeavesTheChartUnselected) {
  Place(NewChart());
  EXPECT_EQ(application->ActiveCell()->Address(), "$A$1");
  EXPECT_EQ(application->Selection()->TypeName(), "Range");
}

TEST_F(MoveAndResizeChart, BringsAChartsSheetToTheFront) {
  const auto chart = NewChart();
  sheets->Item("Dovanta2_Quotes")->Select();
  Place(chart);
  EXPECT_EQ(application->ActiveSheet()->Name(), "Quotes_Vertical(A)");
}

// Parts of the chart

TEST_F(MoveAndResizeChart, FillsTheChartWithItsPlot) {
  const auto chart = NewChart();
  Place(chart);
  const auto shape = ChartShapesOn(*sheet).back();
  EXPECT_EQ(chart->PlotArea()->Left(), 0);
  EXPECT_EQ(chart->PlotArea()->Top(), 0);
  EXPECT_NEAR(chart->PlotArea()->Height(), shape->Height(), 8);
  EXPECT_NEAR(chart->PlotArea()->Width(), shape->Width(), 8);
  EXPECT_LE(chart->PlotArea()->Height(), shape->Height());
  EXPECT_LE(chart->PlotArea()->Width(), shape->Width());
}

// Set beyond the edge, the title moves back to it.
TEST_F(MoveAndResizeChart, PutsTheTitleAtTheFootOfTheChart) {
  for (const bool value_axis : {false, true}) {
    const auto chart = NewChart(value_axis);
    Place(chart);
    const auto title = chart->ChartTitle();
    const double left = title->Left();
    const double top = title->Top();
    EXPECT_GT(top, 76 / 2);
    if (value_axis) {
      EXPECT_GT(left, kWidth / 2);
    } else {
      EXPECT_EQ(left, 0);
    }
    title->Top(chart->PlotArea()->Height());
    title->Left(value_axis ? chart->PlotArea()->Width() : 0);
    EXPECT_EQ(title->Top(), top);
    EXPECT_EQ(title->Left(), left);
  }
}

TEST_F(MoveAndResizeChart, MakesTheTitleATag) {
  const auto chart = NewChart();
  chart->ChartTitle()->Shadow(true);
  Place(chart);
  const auto title = chart->ChartTitle();
  EXPECT_FALSE(title->Shadow());
  EXPECT_EQ(title->Border()->ColorIndex().ToInt32(), 56);
  EXPECT_EQ(title->Border()->Weight().ToInt32(), xlHairline);
  EXPECT_EQ(title->Border()->LineStyle().ToInt32(), xlContinuous);
  EXPECT_EQ(title->Interior()->ColorIndex().ToInt32(), 15);
  EXPECT_EQ(title->Interior()->PatternColorIndex().ToInt32(), 1);
  EXPECT_EQ(title->Interior()->Pattern().ToInt32(), xlPatternSolid);
}

// Heights

TEST_F(MoveAndResizeChart, TakesHeightsUpTo3276) {
  Place(NewChart(), 3276);
  EXPECT_NEAR(ChartShapesOn(*sheet).back()->Height(), 3276, kPixel / 2);
}

TEST_F(MoveAndResizeChart, OverflowsAboveThatWithItsShapePlaced) {
  Answers({"ABORT"});
  const auto chart = NewChart();
  Place(chart, 3277);
  EXPECT_THAT(ReportedErrors(), ElementsAre(6));
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmMirelo.Move_And_Resize_Chart"));
  EXPECT_NEAR(ChartShapesOn(*sheet).back()->Width(), kWidth, kPixel / 2);
  EXPECT_NE(chart->ChartTitle()->Interior()->ColorIndex().ToInt32(), 15);
}

}  // namespace
}  // namespace mirelo::testing
