#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class PointsOfSeries : public ChartedSheet {
 protected:
  std::shared_ptr<Chart> chart = AddChart("B3:B7");
  std::shared_ptr<Series> series = chart->SeriesCollection(1);
  std::shared_ptr<Point> PointAt(std::int32_t index) { return series->Points(index); }
};

TEST_P(PointsOfSeries, AreAsManyAsItsCells) {
  EXPECT_EQ(NumberOf([&] { PointAt(1); }), 0);
  EXPECT_EQ(NumberOf([&] { PointAt(5); }), 0);
  for (const std::int32_t index : {-2'147'483'647 - 1, -1, 0, 6, 2'147'483'647})
    EXPECT_EQ(NumberOf([&] { PointAt(index); }), 1004) << index;
}

TEST_P(PointsOfSeries, LookLikeTheirSeriesAtFirst) {
  series->MarkerBackgroundColorIndex(4);
  series->MarkerForegroundColorIndex(10);
  series->Border()->Weight(xlMedium);
  series->Border()->ColorIndex(53);
  EXPECT_EQ(PointAt(3)->MarkerBackgroundColorIndex(), 4);
  EXPECT_EQ(PointAt(3)->MarkerForegroundColorIndex(), 10);
  EXPECT_EQ(PointAt(3)->Border()->Weight(), Variant(-4138));
  EXPECT_EQ(PointAt(3)->Border()->ColorIndex(), Variant(53));
}

TEST_P(PointsOfSeries, HaveColorsOfTheirOwn) {
  PointAt(2)->MarkerBackgroundColorIndex(3);
  PointAt(2)->MarkerForegroundColorIndex(53);
  PointAt(5)->MarkerBackgroundColorIndex(xlColorIndexNone);
  EXPECT_EQ(PointAt(2)->MarkerBackgroundColorIndex(), 3);
  EXPECT_EQ(PointAt(2)->MarkerForegroundColorIndex(), 53);
  EXPECT_EQ(PointAt(5)->MarkerBackgroundColorIndex(), xlColorIndexNone);
  EXPECT_EQ(PointAt(5)->MarkerForegroundColorIndex(), xlColorIndexAutomatic);
  for (const std::int32_t other : {1, 3, 4})
    EXPECT_EQ(PointAt(other)->MarkerBackgroundColorIndex(), xlColorIndexAutomatic) << other;
  EXPECT_EQ(series->MarkerBackgroundColorIndex(), xlColorIndexAutomatic);
}

TEST_P(PointsOfSeries, TakeEachColorOfThePalette) {
  const auto nearest = [&](std::int32_t index) {
    Range("Z1")->Interior()->ColorIndex(index);
    return Range("Z1")->Interior()->ColorIndex().ToInt32();  // of equal colours one
  };
  for (std::int32_t index = 1; index <= 56; ++index) {
    PointAt(1)->MarkerBackgroundColorIndex(index);
    PointAt(1)->MarkerForegroundColorIndex(index);
    PointAt(1)->Border()->ColorIndex(index);
    EXPECT_EQ(PointAt(1)->MarkerBackgroundColorIndex(), nearest(index));
    EXPECT_EQ(PointAt(1)->MarkerForegroundColorIndex(), nearest(index));
    EXPECT_EQ(PointAt(1)->Border()->ColorIndex(), Variant(nearest(index)));
  }
}

TEST_P(PointsOfSeries, RefuseNumbersThatAreNoColor) {
  PointAt(1)->MarkerBackgroundColorIndex(3);
  PointAt(1)->MarkerForegroundColorIndex(3);
  PointAt(1)->Border()->ColorIndex(3);
  for (const std::int32_t index : {-1, 0, 57, 1000}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(NumberOf([&] { PointAt(1)->MarkerBackgroundColorIndex(index); }), 1004);
    EXPECT_EQ(NumberOf([&] { PointAt(1)->MarkerForegroundColorIndex(index); }), 1004);
  }
  EXPECT_EQ(NumberOf([&] { PointAt(1)->Border()->ColorIndex(57); }), 1004);
  EXPECT_EQ(PointAt(1)->MarkerBackgroundColorIndex(), 3);
  EXPECT_EQ(PointAt(1)->MarkerForegroundColorIndex(), 3);
  EXPECT_EQ(PointAt(1)->Border()->ColorIndex(), Variant(3));
}

TEST_P(PointsOfSeries, LookLikeTheirSeriesAgainWhenTheyAreAutomatic) {
  series->MarkerBackgroundColorIndex(4);
  PointAt(2)->MarkerBackgroundColorIndex(3);
  PointAt(2)->MarkerBackgroundColorIndex(xlColorIndexAutomatic);
  EXPECT_EQ(PointAt(2)->MarkerBackgroundColorIndex(), 4);
}

TEST_P(PointsOfSeries, LoseTheirMarkersColorsWhenTheSeriesGetsOne) {
  PointAt(2)->MarkerBackgroundColorIndex(3);
  PointAt(2)->MarkerForegroundColorIndex(53);
  series->MarkerBackgroundColorIndex(4);
  EXPECT_EQ(PointAt(2)->MarkerBackgroundColorIndex(), 4);
  EXPECT_EQ(PointAt(2)->MarkerForegroundColorIndex(), 53) << "the other colour stays";
  series->MarkerForegroundColorIndex(10);
  EXPECT_EQ(PointAt(2)->MarkerForegroundColorIndex(), 10);
}

TEST_P(PointsOfSeries, HaveLinesOfTheirOwnInTheWeightOfTheSeries) {
  series->Border()->Weight(xlMedium);
  series->Border()->LineStyle(xlContinuous);
  PointAt(2)->Border()->ColorIndex(10);
  EXPECT_EQ(PointAt(2)->Border()->ColorIndex(), Variant(10));
  EXPECT_EQ(PointAt(2)->Border()->Weight(), Variant(-4138));
  EXPECT_EQ(PointAt(2)->Border()->LineStyle(), Variant(1));
  EXPECT_EQ(PointAt(3)->Border()->ColorIndex(), Variant(xlColorIndexAutomatic));
  EXPECT_EQ(series->Border()->ColorIndex(), Variant(xlColorIndexAutomatic));
}

TEST_P(PointsOfSeries, TakeOnWhatIsSetOnTheLineOfTheSeries) {
  PointAt(2)->Border()->ColorIndex(10);
  series->Border()->Weight(xlThick);
  EXPECT_EQ(PointAt(2)->Border()->Weight(), Variant(4));
  EXPECT_EQ(PointAt(2)->Border()->ColorIndex(), Variant(10)) << "which was not set";
  series->Border()->ColorIndex(53);
  EXPECT_EQ(PointAt(2)->Border()->ColorIndex(), Variant(53));
  PointAt(3)->Border()->LineStyle(xlLineStyleNone);
  EXPECT_EQ(PointAt(3)->Border()->LineStyle(), Variant(xlLineStyleNone));
  EXPECT_EQ(PointAt(2)->Border()->LineStyle(), Variant(xlContinuous));
}

TEST_P(PointsOfSeries, KeepTheirLooksByTheirNumbersWhenOtherCellsArePlotted) {
  PointAt(2)->MarkerBackgroundColorIndex(3);
  PointAt(5)->MarkerBackgroundColorIndex(4);
  const auto fifth = PointAt(5);
  series->Values(Range("C10:C12"));
  EXPECT_EQ(PointAt(2)->MarkerBackgroundColorIndex(), 3);
  EXPECT_EQ(NumberOf([&] { PointAt(5); }), 1004);
  EXPECT_EQ(NumberOf([&] { fifth->MarkerBackgroundColorIndex(); }), 1004);
  series->Values(Range("C10:C19"));
  EXPECT_EQ(PointAt(5)->MarkerBackgroundColorIndex(), 4);
  EXPECT_EQ(PointAt(6)->MarkerBackgroundColorIndex(), xlColorIndexAutomatic);
}

TEST_P(PointsOfSeries, MayBeTwelveHundred) {
  constexpr std::int32_t kCount = 1'200;
  application->ScreenUpdating(false);  // or each is drawn by itself
  series->Values(Range("B3")->Resize(kCount, 1));
  for (std::int32_t i = 1; i <= kCount; ++i) {
    PointAt(i)->Border()->ColorIndex(i % 56 + 1);
    PointAt(i)->MarkerBackgroundColorIndex(3);
    PointAt(i)->MarkerForegroundColorIndex(4);
  }
  application->ScreenUpdating(true);
  EXPECT_EQ(PointAt(55)->Border()->ColorIndex(), Variant(56));
  EXPECT_EQ(PointAt(kCount)->MarkerBackgroundColorIndex(), 3);
  EXPECT_EQ(PointAt(kCount)->MarkerForegroundColorIndex(), 4);
}

MIRELO_AGAINST_ALL(PointsOfSeries);

}  // namespace
}  // namespace mirelo::testing
