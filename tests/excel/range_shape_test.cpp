#include "conformance.h"

namespace mirelo::testing {
namespace {

class RangeShape : public Spreadsheets {};

TEST_P(RangeShape, CountsCellsRowsAndColumns) {
  const auto range = Range("B2:D5");
  EXPECT_EQ(range->Count(), 12);
  EXPECT_EQ(range->Rows()->Count(), 4);
  EXPECT_EQ(range->Columns()->Count(), 3);
  EXPECT_EQ(range->Row(), 2);
  EXPECT_EQ(range->Column(), 2);
  EXPECT_EQ(range->Rows()->Cells()->Count(), 12);
}

TEST_P(RangeShape, RaisesError6ForMoreCellsThanCanBeCounted) {
  EXPECT_EQ(NumberOf([&] { sheet->Cells()->Count(); }), 6);
  EXPECT_EQ(Range("A:A")->Count(), RowCount());
}

TEST_P(RangeShape, CountsItemsFromItsFirstCell) {
  const auto range = Range("B2:D5");
  EXPECT_EQ(range->Item(1, 1)->Address(), "$B$2");
  EXPECT_EQ(range->Item(2, 3)->Address(), "$D$3");
  EXPECT_EQ(range->Cells(2, 3)->Address(), "$D$3");
  EXPECT_EQ(range->Item(9, 9)->Address(), "$J$10") << "items may lie outside";
  EXPECT_EQ(range->Item(0, 0)->Address(), "$A$1");
  EXPECT_EQ(NumberOf([&] { range->Item(-1, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { range->Item(INT32_MAX, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { range->Item(INT32_MIN, INT32_MIN); }), 1004);
}

TEST_P(RangeShape, OfOneCellLiesOnItsSheet) {
  EXPECT_EQ(sheet->Cells(1, 1)->Address(), "$A$1");
  EXPECT_EQ(sheet->Cells(RowCount(), 3)->Address(false, false), "C" + std::to_string(RowCount()));
  const auto last = sheet->Cells(RowCount(), sheet->Columns()->Count());
  EXPECT_EQ(last->Column(), sheet->Columns()->Count());
  EXPECT_EQ(NumberOf([&] { sheet->Cells(0, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(1, 0); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(RowCount() + 1, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(1, last->Column() + 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(INT32_MIN, INT32_MAX); }), 1004);
}

TEST_P(RangeShape, CountsSingleItemsByItsView) {
  const auto range = Range("B2:D5");
  EXPECT_EQ(range->Item(1)->Address(), "$B$2");
  EXPECT_EQ(range->Item(3)->Address(), "$D$2");
  EXPECT_EQ(range->Item(4)->Address(), "$B$3");
  EXPECT_EQ(range->Item(13)->Address(), "$B$6") << "beyond the last it goes on below";
  EXPECT_EQ(range->Rows()->Item(2)->Address(), "$B$3:$D$3");
  EXPECT_EQ(range->Columns()->Item(2)->Address(), "$C$2:$C$5");
  EXPECT_EQ(range->Columns()->Item(4)->Address(), "$E$2:$E$5");
  EXPECT_EQ(range->Item(0)->Address(), "$D$1") << "before the first it goes back";
  EXPECT_EQ(NumberOf([&] { Range("A1")->Item(0); }), 1004);
  EXPECT_EQ(NumberOf([&] { range->Rows()->Item(-1); }), 1004);
}

TEST_P(RangeShape, ResizesFromItsFirstCell) {
  EXPECT_EQ(Range("A2")->Resize(3, 2)->Address(), "$A$2:$B$4");
  EXPECT_EQ(Range("B2:F9")->Resize(1, 1)->Address(), "$B$2");
  EXPECT_EQ(Range("A1")->Resize(RowCount(), ColumnCount())->Address(), sheet->Cells()->Address());
}

TEST_P(RangeShape, RaisesError1004ForASizeThatIsNoneOrLeavesTheSheet) {
  EXPECT_EQ(NumberOf([&] { Range("A1")->Resize(0, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { Range("A1")->Resize(1, -1); }), 1004);
  EXPECT_EQ(NumberOf([&] { Range("A2")->Resize(RowCount(), 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { Range("B1")->Resize(1, ColumnCount()); }), 1004);
  EXPECT_EQ(NumberOf([&] { Range("A1")->Resize(INT32_MAX, INT32_MAX); }), 1004);
}

TEST_P(RangeShape, WidensToWholeColumnsAndRows) {
  EXPECT_EQ(Range("B2:D5")->EntireColumn()->Address(), "$B:$D");
  EXPECT_EQ(Range("B2:D5")->EntireColumn()->Count(), 3);
  EXPECT_EQ(Range("B2:D5")->EntireRow()->Address(), "$2:$5");
  EXPECT_EQ(Range("B2:D5")->EntireRow()->Count(), 4);
}

TEST_P(RangeShape, KnowsItsSheet) {
  sheet->Name("Quotes");
  EXPECT_EQ(Range("B2")->Worksheet()->Name(), "Quotes");
}

TEST_P(RangeShape, IsThatOfASheetOfAMillionRows) {
  EXPECT_EQ(RowCount(), 1'048'576);
  EXPECT_EQ(ColumnCount(), 16'384);
  EXPECT_EQ(sheet->Cells(1, ColumnCount())->Address(false, false), "XFD1");
}

TEST_P(RangeShape, HoldsValuesInEveryCorner) {
  sheet->Cells(RowCount(), ColumnCount())->Value("far");
  sheet->Cells(1, ColumnCount())->Value("right");
  sheet->Cells(RowCount(), 1)->Value("low");
  EXPECT_EQ(Get("XFD1048576"), Variant("far"));
  EXPECT_EQ(Get("XFD1"), Variant("right"));
  EXPECT_EQ(Get("A1048576"), Variant("low"));
  EXPECT_TRUE(Get("A1").IsEmpty());
}

MIRELO_AGAINST_ALL(RangeShape);

}  // namespace
}  // namespace mirelo::testing
