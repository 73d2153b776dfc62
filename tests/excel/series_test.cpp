#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class SeriesOfChart : public ChartedSheet {
 protected:
  std::shared_ptr<Chart> chart = AddChart("B3:B7");
  std::shared_ptr<Series> series = chart->SeriesCollection(1);

  // "10 20 - 40": a dash for what is empty.
  std::string Values() {
    const Variant values = series->Values();
    std::string text;
    for (std::int32_t i = 1; i <= values.AsArray().UBound(); ++i) {
      if (i > 1) text += ' ';
      const Variant& value = values.AsArray()(i);
      text += value.IsEmpty() ? "-" : value.ToText();
    }
    return text;
  }
};

TEST_P(SeriesOfChart, GivesTheNumbersOfItsCellsFromLowerBoundOne) {
  CountByTens("B3", 5);
  const Variant values = series->Values();
  ASSERT_TRUE(values.IsArray());
  EXPECT_EQ(values.AsArray().Dimensions(), 1);
  EXPECT_EQ(values.AsArray().LBound(), 1);
  EXPECT_EQ(values.AsArray().UBound(), 5);
  EXPECT_EQ(values.AsArray()(1).type(), Variant::Type::Double);
  EXPECT_EQ(Values(), "10 20 30 40 50");
}

TEST_P(SeriesOfChart, GivesNothingForCellsWithoutANumber) {
  Put("B3", "Last");
  Put("B4", true);
  Put("B5", "#N/A");
  Put("B7", 5.0);
  EXPECT_EQ(Values(), "- - - - 5");
}

TEST_P(SeriesOfChart, GivesDatesAsNumbers) {
  Put("B3", 36526.0);
  Range("B3")->NumberFormat("mm/dd/yyyy");
  EXPECT_EQ(series->Values().AsArray()(1).type(), Variant::Type::Double);
}

TEST_P(SeriesOfChart, FollowsWhatIsWrittenToItsCells) {
  Put("B3:B7", 1.0);
  Put("B6", 2.0);
  EXPECT_EQ(Values(), "1 1 1 2 1");
}

TEST_P(SeriesOfChart, PlotsOtherCellsOnceTheyAreSet) {
  CountByTens("C1", 9);
  series->Values(Range("C2:C4"));
  EXPECT_EQ(Values(), "20 30 40");
  Put("E1:G1", 3.0);
  series->Values(Range("E1:G1"));
  EXPECT_EQ(Values(), "3 3 3") << "a row";
  series->Values(Range("C9"));
  EXPECT_EQ(Values(), "90") << "a single cell";
}

TEST_P(SeriesOfChart, PlotsCellsOfOtherSheets) {
  const auto other = sheets->Add();
  other->Range("A1:A2")->Value(8.0);
  series->Values(other->Range("A1:A3"));
  EXPECT_EQ(Values(), "8 8 -");
}

TEST_P(SeriesOfChart, RefusesWhatItCannotPlot) {
  CountByTens("B3", 5);
  EXPECT_EQ(NumberOf([&] { series->Values(Range("B3:C7")); }), 1004);
  EXPECT_EQ(NumberOf([&] { series->Values(GetParam().application()->Range("A1")); }), 1004);
  EXPECT_EQ(NumberOf([&] { series->Values(1.0); }), 13);
  EXPECT_EQ(NumberOf([&] { series->Values("B3:B7"); }), 13);
  EXPECT_EQ(NumberOf([&] { series->Values(Variant()); }), 13);
  EXPECT_EQ(NumberOf([&] { series->Values(chart); }), 13);
  EXPECT_EQ(NumberOf([&] { series->Values(Range("B3:B7")->Value()); }), 13);
  EXPECT_EQ(Values(), "10 20 30 40 50");
}

TEST_P(SeriesOfChart, CanPlotAWholeColumn) {
  Put("B1048576", 4.0);
  series->Values(Range("B:B"));
  EXPECT_EQ(series->Values().AsArray().UBound(), RowCount());
  EXPECT_EQ(series->Values().AsArray()(RowCount()), Variant(4.0));
}

TEST_P(SeriesOfChart, HasMarkersOfAStyleAndASize) {
  EXPECT_EQ(series->MarkerStyle(), xlMarkerStyleAutomatic);
  for (const std::int32_t style : {xlMarkerStyleSquare, xlMarkerStyleDiamond, xlMarkerStyleTriangle,
                                   xlMarkerStyleCircle, xlMarkerStyleNone, xlMarkerStyleAutomatic}) {
    series->MarkerStyle(style);
    EXPECT_EQ(series->MarkerStyle(), style);
  }
  series->MarkerStyle(xlMarkerStyleDiamond);
  EXPECT_EQ(NumberOf([&] { series->MarkerStyle(4); }), 1004);
  EXPECT_EQ(NumberOf([&] { series->MarkerStyle(0); }), 1004);
  EXPECT_EQ(series->MarkerStyle(), 2);

  for (const std::int32_t size : {2, 6, 72}) {
    series->MarkerSize(size);
    EXPECT_EQ(series->MarkerSize(), size);
  }
  for (const std::int32_t size : {-1, 0, 1, 73}) {
    EXPECT_EQ(NumberOf([&] { series->MarkerSize(size); }), 1004) << size;
  }
  EXPECT_EQ(series->MarkerSize(), 72);
}

TEST_P(SeriesOfChart, MayBeSmoothAndCastAShadow) {
  EXPECT_FALSE(series->Smooth());
  EXPECT_FALSE(series->Shadow());
  series->Smooth(true);
  EXPECT_TRUE(series->Smooth());
  EXPECT_FALSE(series->Shadow());
  series->Shadow(true);
  series->Smooth(false);
  EXPECT_FALSE(series->Smooth());
  EXPECT_TRUE(series->Shadow());
}

TEST_P(SeriesOfChart, HasALineThatCanBeDrawn) {
  const auto line = series->Border();
  EXPECT_EQ(line->LineStyle(), Variant(xlLineStyleAutomatic));
  line->Weight(xlMedium);
  line->LineStyle(xlContinuous);
  line->ColorIndex(53);
  EXPECT_EQ(series->Border()->Weight(), Variant(-4138));
  EXPECT_EQ(series->Border()->LineStyle(), Variant(1));
  EXPECT_EQ(series->Border()->ColorIndex(), Variant(53));
}

TEST_P(SeriesOfChart, HasTwoColorsOfItsMarkers) {
  EXPECT_EQ(series->MarkerBackgroundColorIndex(), xlColorIndexAutomatic);
  EXPECT_EQ(series->MarkerForegroundColorIndex(), xlColorIndexAutomatic);
  series->MarkerBackgroundColorIndex(4);
  series->MarkerForegroundColorIndex(10);
  EXPECT_EQ(series->MarkerBackgroundColorIndex(), 4);
  EXPECT_EQ(series->MarkerForegroundColorIndex(), 10);
  series->MarkerBackgroundColorIndex(xlColorIndexNone);
  series->MarkerForegroundColorIndex(xlColorIndexAutomatic);
  EXPECT_EQ(series->MarkerBackgroundColorIndex(), xlColorIndexNone);
  EXPECT_EQ(series->MarkerForegroundColorIndex(), xlColorIndexAutomatic);
  for (const std::int32_t index : {-1, 0, 57, 1000}) {
    EXPECT_EQ(NumberOf([&] { series->MarkerBackgroundColorIndex(index); }), 1004) << index;
    EXPECT_EQ(NumberOf([&] { series->MarkerForegroundColorIndex(index); }), 1004) << index;
  }
  EXPECT_EQ(series->MarkerBackgroundColorIndex(), xlColorIndexNone);
}

TEST_P(SeriesOfChart, KeepsItsLooksApartFromOtherSeries) {
  chart->SetSourceData(*Range("B3:C7"), xlColumns);
  series->MarkerSize(9);
  series->MarkerBackgroundColorIndex(3);
  series->Border()->ColorIndex(3);
  const auto second = chart->SeriesCollection(2);
  EXPECT_NE(second->MarkerSize(), 9);
  EXPECT_EQ(second->MarkerBackgroundColorIndex(), xlColorIndexAutomatic);
  EXPECT_EQ(second->Border()->LineStyle(), Variant(xlLineStyleAutomatic));
}

// Rows that are deleted move, shorten or take away what is plotted.

TEST_P(SeriesOfChart, FollowsDeletedRows) {
  const struct {
    const char* deleted;
    const char* values;
  } cases[] = {
      {"1:2", "10 20 30 40 50"},   {"2:4", "30 40 50"},        {"4:5", "10 40 50"},
      {"7:9", "10 20 30 40"},      {"8:20", "10 20 30 40 50"}, {"B1:B3", "20 30 40 50"},
      {"A5:D5", "10 20 40 50"},    {"B4:B1000", "10"},         {"1:1", "10 20 30 40 50"},
      {"C1:C9", "10 20 30 40 50"}, {"4:1048576", "10"},
  };
  for (const auto& [deleted, values] : cases) {
    SCOPED_TRACE(deleted);
    sheet->Cells()->ClearContents();
    CountByTens("B3", 5);
    Put("B8:B9", 1.0);
    series->Values(Range("B3:B7"));
    Range(deleted)->Delete(xlShiftUp);
    EXPECT_EQ(Values(), values);
  }
}

TEST_P(SeriesOfChart, LosesItsCellsWhenAllOfThemAreDeleted) {
  CountByTens("B3", 5);
  series->Points(2)->MarkerBackgroundColorIndex(3);
  sheet->Rows("3:7")->Delete(xlShiftUp);
  const Variant values = series->Values();
  ASSERT_TRUE(values.IsArray());
  EXPECT_LT(values.AsArray().UBound(), values.AsArray().LBound());
  EXPECT_EQ(NumberOf([&] { series->Points(1); }), 1004);
  CountByTens("B3", 5);
  EXPECT_LT(series->Values().AsArray().UBound(), 1) << "it does not find them again";
  series->Values(Range("B3:B7"));
  EXPECT_EQ(Values(), "10 20 30 40 50");
  EXPECT_EQ(series->Points(2)->MarkerBackgroundColorIndex(), 3);
}

TEST_P(SeriesOfChart, FollowsOnlyWhenItsWholeWidthMoves) {
  Put("B3:D3", 6.0);
  series->Values(Range("B3:D3"));
  Range("B1:C1")->Delete(xlShiftUp);
  EXPECT_EQ(Values(), "- - 6") << "it stays in row 3";
  Range("B1:D1")->Delete(xlShiftUp);
  EXPECT_EQ(Values(), "- - 6") << "it moved to row 2";
}

TEST_P(SeriesOfChart, FollowsOnlyTheRowsOfItsOwnSheet) {
  CountByTens("B3", 5);
  const auto other = sheets->Add();
  other->Rows("1:9")->Delete(xlShiftUp);
  EXPECT_EQ(Values(), "10 20 30 40 50");
  const auto elsewhere = AddChart("B3:B7")->Location(xlLocationAsObject, other->Name());
  const auto on_a_sheet_of_its_own = AddChartSheet("B3:B7");
  sheet->Rows("3:3")->Delete(xlShiftUp);
  EXPECT_EQ(elsewhere->SeriesCollection(1)->Values().AsArray()(1), Variant(20.0));
  EXPECT_EQ(on_a_sheet_of_its_own->SeriesCollection(1)->Values().AsArray()(1), Variant(20.0));
}

TEST_P(SeriesOfChart, KeepsItsCellsWhenTheyAreCleared) {
  CountByTens("B3", 5);
  sheet->Cells()->Clear();
  EXPECT_EQ(Values(), "- - - - -");
}

MIRELO_AGAINST_ALL(SeriesOfChart);

}  // namespace
}  // namespace mirelo::testing
