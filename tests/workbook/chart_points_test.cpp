#include <gtest/gtest.h>

#include "adapters/workbook/objects/application_object.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/series.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/worksheets.h"
#include "support/error_number.h"
#include "workbook/chart_models.h"

namespace mirelo::testing {
namespace {

using workbook::ChartPoint;

// What points cost: only those that have something for themselves are kept, and none before them twice.
class KeptPoints : public ::testing::Test {
 protected:
  static constexpr std::int32_t kPoints = 1'200;

  KeptPoints() {
    AddChart(book->sheets.front(), 4, kPoints + 2);
    const auto sheet = std::make_shared<workbook::ApplicationObject>(book)->Worksheets()->Item(1);
    series = sheet->Shapes()->Item(1)->Chart()->SeriesCollection(1);
  }
  std::vector<ChartPoint>& Kept() { return book->sheets.front()->charts.all.front()->series.front().points; }

  std::shared_ptr<Book> book = BookWithHistory(kPoints);
  std::shared_ptr<host::excel::Series> series;
};

TEST_F(KeptPoints, AreNoneWhileTheyAreOnlyReadAndTheSeriesIsSet) {
  series->Border()->Weight(host::excel::xlMedium);
  series->MarkerBackgroundColorIndex(4);
  for (std::int32_t i = 1; i <= kPoints; ++i) {
    const auto point = series->Points(i);
    EXPECT_EQ(point->MarkerBackgroundColorIndex(), 4);
    EXPECT_EQ(point->MarkerForegroundColorIndex(), host::excel::xlColorIndexAutomatic);
    EXPECT_EQ(point->Border()->Weight(), Variant(host::excel::xlMedium));
  }
  EXPECT_EQ(Kept().capacity(), 0U);
}

TEST_F(KeptPoints, AreNoneWhenSettingOneIsRefused) {
  EXPECT_EQ(NumberOf([&] { series->Points(kPoints)->MarkerBackgroundColorIndex(57); }), 1004);
  EXPECT_EQ(NumberOf([&] { series->Points(kPoints)->Border()->ColorIndex(57); }), 1004);
  EXPECT_EQ(Kept().size(), 0U);
}

TEST_F(KeptPoints, ReachToTheLastThatWasSet) {
  series->Points(7)->MarkerForegroundColorIndex(3);
  EXPECT_EQ(Kept().size(), 7U);
  series->Points(2)->MarkerForegroundColorIndex(3);
  EXPECT_EQ(Kept().size(), 7U);
}

TEST_F(KeptPoints, AreMovedSeldomWhenAllAreSetOneAfterTheOther) {
  int moves = 0;
  const ChartPoint* before = nullptr;
  for (std::int32_t i = 1; i <= kPoints; ++i) {
    series->Points(i)->MarkerBackgroundColorIndex(3);
    moves += Kept().data() != before ? 1 : 0;
    before = Kept().data();
  }
  EXPECT_EQ(Kept().size(), static_cast<std::size_t>(kPoints));
  EXPECT_LE(moves, 20) << "as often as their number doubles";
}

TEST_F(KeptPoints, AreForgottenWhenTheSeriesTakesTheirColorsOver) {
  for (std::int32_t i = 1; i <= kPoints; ++i) series->Points(i)->MarkerBackgroundColorIndex(3);
  series->Points(5)->Border()->ColorIndex(10);
  series->MarkerBackgroundColorIndex(4);
  EXPECT_EQ(Kept().size(), 5U) << "the fifth has a line of its own";
}

}  // namespace
}  // namespace mirelo::testing
