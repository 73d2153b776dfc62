#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class FillOfChart : public ChartedSheet {
 protected:
  std::shared_ptr<Chart> chart = AddChart();
  std::shared_ptr<ChartFillFormat> area = chart->ChartArea()->Fill();
  std::shared_ptr<ChartFillFormat> plot = chart->PlotArea()->Fill();
};

TEST_P(FillOfChart, RunsFromOneColorToTheOther) {
  area->TwoColorGradient(msoGradientVertical, 1);
  area->Visible(msoTrue);
  area->ForeColor()->SchemeColor(47);
  area->BackColor()->SchemeColor(17);
  EXPECT_EQ(chart->ChartArea()->Fill()->Visible(), msoTrue);
  EXPECT_EQ(chart->ChartArea()->Fill()->ForeColor()->SchemeColor(), 47);
  EXPECT_EQ(chart->ChartArea()->Fill()->BackColor()->SchemeColor(), 17);
}

TEST_P(FillOfChart, IsTheAreasOwn) {
  area->ForeColor()->SchemeColor(10);
  plot->ForeColor()->SchemeColor(50);
  EXPECT_EQ(area->ForeColor()->SchemeColor(), 10);
  EXPECT_EQ(plot->ForeColor()->SchemeColor(), 50);
}

TEST_P(FillOfChart, TakesTheColorsOfAllStyles) {
  for (const std::int32_t index : {47, 17, 24, 10, 50, 35, 16, 48, 36}) {
    plot->ForeColor()->SchemeColor(index);
    plot->BackColor()->SchemeColor(index);
    EXPECT_EQ(plot->ForeColor()->SchemeColor(), index);
    EXPECT_EQ(plot->BackColor()->SchemeColor(), index);
  }
}

TEST_P(FillOfChart, RefusesNumbersThatAreNoColor) {
  area->ForeColor()->SchemeColor(3);
  for (const std::int32_t index : {-4142, -4105, -1, 0, 57})
    EXPECT_EQ(NumberOf([&] { area->ForeColor()->SchemeColor(index); }), 1004) << index;
  EXPECT_EQ(area->ForeColor()->SchemeColor(), 3);
}

TEST_P(FillOfChart, RefusesStylesAndVariantsOfGradientsThatAreNone) {
  for (const std::int32_t style : {0, 3, -1})
    EXPECT_EQ(NumberOf([&] { area->TwoColorGradient(static_cast<MsoGradientStyle>(style), 1); }), 1004)
        << style;
  for (const std::int32_t variant : {-1, 0, 5})
    EXPECT_EQ(NumberOf([&] { area->TwoColorGradient(msoGradientVertical, variant); }), 1004) << variant;
  for (const std::int32_t variant : {1, 2, 3, 4})
    EXPECT_EQ(NumberOf([&] { area->TwoColorGradient(msoGradientHorizontal, variant); }), 0) << variant;
}

TEST_P(FillOfChart, CanBeTakenAwayAndComesBack) {
  EXPECT_EQ(area->Visible(), msoTrue);
  area->TwoColorGradient(msoGradientVertical, 1);
  area->ForeColor()->SchemeColor(47);
  area->Visible(msoFalse);
  EXPECT_EQ(area->Visible(), msoFalse);
  EXPECT_EQ(plot->Visible(), msoTrue);
  area->Visible(msoTrue);
  EXPECT_EQ(area->Visible(), msoTrue);
  EXPECT_EQ(area->ForeColor()->SchemeColor(), 47);
  plot->Visible(msoFalse);
  plot->TwoColorGradient(msoGradientVertical, 1);
  EXPECT_EQ(plot->Visible(), msoTrue) << "a gradient is seen";
}

MIRELO_AGAINST_ALL(FillOfChart);

}  // namespace
}  // namespace mirelo::testing
