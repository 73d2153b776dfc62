#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class LineOfChart : public ChartedSheet {
 protected:
  std::shared_ptr<Border> line = AddChart()->PlotArea()->Border();

  void Expect(std::int32_t style, std::int32_t weight, std::int32_t color) {
    EXPECT_EQ(line->LineStyle(), Variant(style));
    EXPECT_EQ(line->Weight(), Variant(weight));
    EXPECT_EQ(line->ColorIndex(), Variant(color));
  }
};

TEST_P(LineOfChart, IsAutomaticAtFirst) { Expect(xlLineStyleAutomatic, xlThin, xlColorIndexAutomatic); }

TEST_P(LineOfChart, HasEachWeightInEachStyle) {
  for (const std::int32_t style :
       {xlContinuous, xlDash, xlDashDot, xlDashDotDot, xlDot, xlDouble, xlSlantDashDot}) {
    for (const std::int32_t weight : {xlHairline, xlThin, xlMedium, xlThick}) {
      line->LineStyle(style);
      line->Weight(weight);
      Expect(style, weight, xlColorIndexAutomatic);
      line->Weight(weight);
      line->LineStyle(style);
      Expect(style, weight, xlColorIndexAutomatic);
    }
  }
}

TEST_P(LineOfChart, IsDrawnByWhateverIsSetFirst) {
  line->Weight(xlMedium);
  Expect(xlContinuous, xlMedium, xlColorIndexAutomatic);
  line->LineStyle(xlLineStyleAutomatic);
  line->ColorIndex(3);
  Expect(xlContinuous, xlThin, 3);
  line->LineStyle(xlLineStyleNone);
  line->LineStyle(xlDash);
  Expect(xlDash, xlThin, xlColorIndexAutomatic);
}

TEST_P(LineOfChart, StaysAutomaticInTheAutomaticColor) {
  line->ColorIndex(xlColorIndexAutomatic);
  EXPECT_EQ(line->LineStyle(), Variant(xlLineStyleAutomatic));
}

TEST_P(LineOfChart, CanBeTakenAway) {
  line->ColorIndex(3);
  line->LineStyle(xlLineStyleNone);
  Expect(xlLineStyleNone, xlThin, xlColorIndexNone);
  line->ColorIndex(3);
  Expect(xlContinuous, xlThin, 3);
  line->ColorIndex(xlColorIndexNone);
  Expect(xlLineStyleNone, xlThin, xlColorIndexNone);
}

TEST_P(LineOfChart, RefusesNumbersThatAreNone) {
  line->LineStyle(xlDash);
  line->Weight(xlThick);
  line->ColorIndex(3);
  for (const std::int32_t style : {0, 2, 3, 6, -1}) {
    EXPECT_EQ(NumberOf([&] { line->LineStyle(style); }), 1004) << style;
  }
  for (const std::int32_t weight : {0, 3, 5, -1, -4105}) {
    EXPECT_EQ(NumberOf([&] { line->Weight(weight); }), 1004) << weight;
  }
  for (const std::int32_t color : {57, -1, 1000}) {
    EXPECT_EQ(NumberOf([&] { line->ColorIndex(color); }), 1004) << color;
  }
  Expect(xlDash, xlThick, 3);
}

MIRELO_AGAINST_ALL(LineOfChart);

}  // namespace
}  // namespace mirelo::testing
