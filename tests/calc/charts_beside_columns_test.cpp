// Where charts in a document stay when columns change, whoever changes them.

#include <gtest/gtest.h>

#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/WritingMode2.hpp>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "calc/drawn_charts.h"
#include "host/excel/chart.h"
#include "host/excel/charts.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/worksheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using calc::As;
using calc::Properties;

class ChartsBesideColumns : public DrawnCharts {
 protected:
  // Where a column begins, and where the chart does, as the office has them.
  sal_Int32 ColumnSeen(sal_Int32 column) const {
    return Properties(Sheet()->getCellByPosition(column, 0)).Get("Position", css::awt::Point()).X;
  }
  sal_Int32 LeftSeen() const { return Seen().shape->getPosition().X; }
  void ResizeAsAPerson(sal_Int32 column, sal_Int32 width) const {
    Properties(As<css::table::XColumnRowRange>(Sheet())->getColumns()->getByIndex(column))
        .Set("Width", width);
  }
  // Another colour of a point, as with each quote.
  void Paint() const { chart->SeriesCollection(1)->Points(1)->MarkerBackgroundColorIndex(++color); }

  void SetUp() override { sheet->Shapes()->Item(1)->Left(sheet->Range("D1")->Left()); }

  std::shared_ptr<Chart> chart = AddChart();
  mutable std::int32_t color = 2;
};

TEST_F(ChartsBesideColumns, MoveAtOnceWhenClientsFitColumns) {
  sheet->Range("C1")->Value("a text that is wider than its column");
  sheet->Columns("C")->AutoFit();
  EXPECT_EQ(LeftSeen(), ColumnSeen(3));
}

TEST_F(ChartsBesideColumns, MoveWhenTheyArePutAndColumnsFittedWhileTheScreenIsHeld) {
  application->ScreenUpdating(false);
  sheet->Shapes()->Item(1)->Left(sheet->Range("E1")->Left());
  sheet->Range("C1")->Value("a text that is wider than its column");
  sheet->Columns("C")->AutoFit();
  EXPECT_EQ(sheet->Shapes()->Item(1)->Left(), sheet->Range("E1")->Left());
  application->ScreenUpdating(true);
  EXPECT_EQ(LeftSeen(), ColumnSeen(4));
}

TEST_F(ChartsBesideColumns, MoveWithTheNextQuoteWhenAPersonResizesOrInsertsColumns) {
  Paint();
  ResizeAsAPerson(1, 6000);
  Paint();
  EXPECT_EQ(LeftSeen(), ColumnSeen(3));
  As<css::table::XColumnRowRange>(Sheet())->getColumns()->insertByIndex(0, 1);
  Paint();
  EXPECT_EQ(LeftSeen(), ColumnSeen(4));
}

TEST_F(ChartsBesideColumns, GoOnWhenAPersonTakesTheirColumnAway) {
  Paint();
  As<css::table::XColumnRowRange>(Sheet())->getColumns()->removeByIndex(3, 1);
  const sal_Int32 left = LeftSeen();
  Paint();
  Paint();
  EXPECT_EQ(LeftSeen(), left);
  ResizeAsAPerson(1, 6000);
  Paint();
  EXPECT_EQ(LeftSeen(), ColumnSeen(3));
}

TEST_F(ChartsBesideColumns, StayWhereAPersonHasPutThemBesideOtherColumns) {
  Seen().shape->setPosition({ColumnSeen(6) + 300, 500});
  Paint();
  ResizeAsAPerson(1, 6000);
  Paint();
  EXPECT_EQ(LeftSeen(), ColumnSeen(6) + 300);
}

TEST_F(ChartsBesideColumns, AreTheOfficesThatAPersonHasAnchoredToACell) {
  Properties(Seen().shape).Set("Anchor", As<css::table::XCell>(Sheet()->getCellByPosition(3, 0)));
  Paint();
  const auto width = Seen().shape->getSize().Width;
  sheet->Columns("B")->ColumnWidth(30);
  ResizeAsAPerson(4, 9000);
  Paint();
  EXPECT_NEAR(LeftSeen(), ColumnSeen(3), 14);
  EXPECT_EQ(Seen().shape->getSize().Width, width) << "it is anchored without growing";
}

TEST_F(ChartsBesideColumns, StayOnASheetThatGoesFromTheRightToTheLeft) {
  Properties(Sheet()).Set("TableLayout", css::text::WritingMode2::RL_TB);
  Paint();
  const sal_Int32 left = LeftSeen();
  sheet->Columns("B")->ColumnWidth(30);
  Paint();
  EXPECT_EQ(LeftSeen(), left);
}

}  // namespace
}  // namespace mirelo::testing
