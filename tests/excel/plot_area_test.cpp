#include <limits>

#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class PlotAreaOfChart : public ChartedSheet {
 protected:
  std::shared_ptr<Chart> chart = AddChart();
  std::shared_ptr<Shape> shape = ShapeOf(chart);
  std::shared_ptr<PlotArea> plot = chart->PlotArea();

  void ExpectWithin(double width, double height) {
    EXPECT_GE(plot->Left(), 0);
    EXPECT_GE(plot->Top(), 0);
    EXPECT_GT(plot->Width(), 0);
    EXPECT_GT(plot->Height(), 0);
    EXPECT_LE(plot->Left() + plot->Width(), width);
    EXPECT_LE(plot->Top() + plot->Height(), height);
  }
};

TEST_P(PlotAreaOfChart, TakesWhatTitleAndLegendLeaveAtFirst) {
  ExpectWithin(360, 216);
  const double width = plot->Width();
  const double height = plot->Height();
  chart->HasLegend(false);
  EXPECT_GT(plot->Width(), width);
  chart->HasTitle(true);
  EXPECT_LT(plot->Height(), height);
  ExpectWithin(360, 216);
}

TEST_P(PlotAreaOfChart, StandsWhereItIsPut) {
  plot->Width(100);
  plot->Height(50);
  plot->Left(30);
  plot->Top(20.5);
  EXPECT_EQ(plot->Left(), 30);
  EXPECT_EQ(plot->Top(), 20.5);
  EXPECT_EQ(plot->Width(), 100);
  EXPECT_EQ(plot->Height(), 50);
  chart->HasLegend(false);
  chart->HasTitle(true);
  EXPECT_EQ(plot->Width(), 100) << "whatever the others leave";
  EXPECT_EQ(plot->Top(), 20.5);
}

// As a client does that wants it as large as the chart.
TEST_P(PlotAreaOfChart, IsCutBackToTheWholeChartWhenItIsSetFarTooLarge) {
  shape->Height(75.75);
  shape->Width(200.25);
  plot->Left(0);
  plot->Top(0);
  plot->Height(760);
  plot->Width(2000);
  EXPECT_EQ(plot->Left(), 0);
  EXPECT_EQ(plot->Top(), 0);
  EXPECT_EQ(plot->Height(), 75.75);
  EXPECT_EQ(plot->Width(), 200.25);
}

TEST_P(PlotAreaOfChart, IsCutBackAtTheFarEdgesOnly) {
  plot->Width(10);
  plot->Height(10);
  plot->Left(100);
  plot->Top(50);
  plot->Width(10'000);
  plot->Height(10'000);
  EXPECT_EQ(plot->Left(), 100);
  EXPECT_EQ(plot->Top(), 50);
  EXPECT_EQ(plot->Width(), 260);
  EXPECT_EQ(plot->Height(), 166);
}

TEST_P(PlotAreaOfChart, IsMovedBackIntoTheChart) {
  plot->Width(100);
  plot->Height(50);
  plot->Left(10'000);
  plot->Top(10'000);
  EXPECT_EQ(plot->Left(), 260);
  EXPECT_EQ(plot->Top(), 166);
  plot->Left(-10);
  plot->Top(-10);
  EXPECT_EQ(plot->Left(), 0);
  EXPECT_EQ(plot->Top(), 0);
}

TEST_P(PlotAreaOfChart, GrowsAndShrinksWithTheChart) {
  plot->Width(180);
  plot->Height(108);
  plot->Left(90);
  plot->Top(54);
  shape->Width(720);
  shape->Height(108);
  EXPECT_EQ(plot->Left(), 180);
  EXPECT_EQ(plot->Width(), 360);
  EXPECT_EQ(plot->Top(), 27);
  EXPECT_EQ(plot->Height(), 54);
}

TEST_P(PlotAreaOfChart, LiesWithinTheSmallestChart) {
  chart->HasTitle(true);
  shape->Width(0.75);
  shape->Height(0.75);
  ExpectWithin(0.75, 0.75);
  plot->Width(100);
  plot->Height(100);
  ExpectWithin(0.75, 0.75);
}

TEST_P(PlotAreaOfChart, RefusesPlacesAndSizesThatAreNone) {
  constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();
  const double width = plot->Width();
  for (const double size : {0.0, -1.0, kNothing, std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(NumberOf([&] { plot->Width(size); }), 1004) << size;
    EXPECT_EQ(NumberOf([&] { plot->Height(size); }), 1004) << size;
  }
  EXPECT_EQ(NumberOf([&] { plot->Left(kNothing); }), 1004);
  EXPECT_EQ(NumberOf([&] { plot->Top(kNothing); }), 1004);
  EXPECT_EQ(plot->Width(), width);
}

TEST_P(PlotAreaOfChart, HasABorder) {
  plot->Border()->ColorIndex(56);
  plot->Border()->Weight(xlThin);
  plot->Border()->LineStyle(xlContinuous);
  EXPECT_EQ(chart->PlotArea()->Border()->ColorIndex(), Variant(56));
  EXPECT_EQ(chart->PlotArea()->Border()->Weight(), Variant(2));
  EXPECT_EQ(chart->PlotArea()->Border()->LineStyle(), Variant(1));
}

// What the title of a small chart does when it is put at the foot, as a tag.
TEST_P(PlotAreaOfChart, LeavesRoomForATitleAtItsFoot) {
  chart->HasTitle(true);
  const auto title = chart->ChartTitle();
  title->Text("LastVolume");
  title->AutoScaleFont(false);
  title->Font()->Size(8);
  shape->Height(76);
  shape->Width(200);
  plot->Left(0);
  plot->Top(0);
  plot->Height(760);
  plot->Width(2000);
  title->Top(plot->Height());
  title->Left(plot->Width());
  EXPECT_LT(title->Top(), plot->Height() - 8);
  EXPECT_GT(title->Top(), plot->Height() / 2);
  EXPECT_GT(title->Left(), plot->Width() / 2);
  EXPECT_LT(title->Left(), plot->Width() - 30);
  title->Left(0);
  EXPECT_EQ(title->Left(), 0);
}

MIRELO_AGAINST_ALL(PlotAreaOfChart);

}  // namespace
}  // namespace mirelo::testing
