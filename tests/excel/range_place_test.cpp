#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class RangePlace : public Spreadsheets {};

TEST_P(RangePlace, BeginsAtTheSheetsTopLeftCorner) {
  EXPECT_EQ(Range("A1")->Left(), 0);
  EXPECT_EQ(Range("A1")->Top(), 0);
}

TEST_P(RangePlace, IsThatOfItsFirstCellWithTheSizeOfAll) {
  const double width = Range("A1")->Width();
  const double height = Range("A1")->Height();
  ExpectPoints(Range("C4:E9")->Left(), 2 * width, 2);
  ExpectPoints(Range("C4:E9")->Top(), 3 * height, 3);
  ExpectPoints(Range("C4:E9")->Width(), 3 * width, 3);
  ExpectPoints(Range("C4:E9")->Height(), 6 * height, 6);
}

TEST_P(RangePlace, OfACellThatNobodyResizedIs48By15Points) {
  EXPECT_EQ(Range("A1")->Width(), 48);
  EXPECT_EQ(Range("A1")->Height(), 15);
  EXPECT_EQ(Range("A1")->ColumnWidth(), Variant(8.43));
}

TEST_P(RangePlace, EndsWhereTheNextOneBegins) {
  const double standard = Range("A1")->Width();
  Put("B1", "a text that is wider than its column");
  Put("D1", "x");
  sheet->Columns("B:D")->AutoFit();
  EXPECT_GT(Range("B1")->Width(), standard);
  EXPECT_LT(Range("D1")->Width(), standard);
  double left = 0;
  for (std::int32_t column = 1; column <= 6; ++column) {
    const auto cell = sheet->Cells(1, column);
    ExpectPoints(cell->Left(), left);
    left += cell->Width();
  }
  ExpectPoints(Range("A1:F1")->Width(), left);
}

TEST_P(RangePlace, IsMeasuredInWholePixels) {
  Put("B1", "a text that is wider than its column");
  sheet->Columns("B")->AutoFit();
  const double pixels = Range("B1")->Width() / 0.75;
  EXPECT_EQ(pixels, static_cast<std::int32_t>(pixels));
}

TEST_P(RangePlace, OfTheWholeSheetReachesToItsEnd) {
  const auto last = sheet->Cells(RowCount(), ColumnCount());
  ExpectPoints(sheet->Cells()->Width(), last->Left() + last->Width());
  ExpectPoints(sheet->Cells()->Height(), last->Top() + last->Height());
  EXPECT_EQ(sheet->Columns("C")->Height(), sheet->Cells()->Height());
  EXPECT_EQ(sheet->Rows("3")->Width(), sheet->Cells()->Width());
}

TEST_P(RangePlace, IsAsWideAsSoManyDigits) {
  const Variant standard = Range("B1")->ColumnWidth();
  Range("B1:C9")->ColumnWidth(20);
  EXPECT_EQ(Range("B7")->ColumnWidth(), Variant(20.0));
  ExpectPoints(Range("B1")->Width(), 145 * 0.75);
  EXPECT_EQ(Range("D1")->ColumnWidth(), standard);
  EXPECT_TRUE(Range("B1:D1")->ColumnWidth().IsEmpty()) << "they differ";
  for (const double digits : {0.0, 0.5, 1.0, 8.43, 30.71, 255.0}) {
    Range("B1")->ColumnWidth(digits);
    EXPECT_EQ(Range("B1")->ColumnWidth(), Variant(digits));
  }
  for (const double digits : {-1.0, 255.5})
    EXPECT_EQ(NumberOf([&] { Range("B1")->ColumnWidth(digits); }), 1004) << digits;
}

class WindowOnSheet : public ChartedSheet {
 protected:
  std::string Seen() { return application->ActiveWindow()->VisibleRange()->Address(false, false); }
};

TEST_P(WindowOnSheet, ShowsTheSheetFromItsFirstCell) {
  const auto seen = application->ActiveWindow()->VisibleRange();
  EXPECT_EQ(seen->Row(), 1);
  EXPECT_EQ(seen->Column(), 1);
  EXPECT_GT(seen->Rows()->Count(), 10);
  EXPECT_GT(seen->Columns()->Count(), 5);
}

TEST_P(WindowOnSheet, ShowsTwentyColumnsAnd27RowsOfTheirFirstSizes) {
  EXPECT_EQ(Seen(), "A1:T27");
  EXPECT_EQ(application->ActiveWindow()->VisibleRange()->Width(), 960);
  EXPECT_EQ(application->ActiveWindow()->VisibleRange()->Height(), 405);
}

TEST_P(WindowOnSheet, ShowsFewerColumnsTheWiderTheyAre) {
  const auto before = application->ActiveWindow()->VisibleRange();
  const std::int32_t columns = before->Columns()->Count();
  const double standard = Range("A1")->Width();
  const double width = before->Width();
  Put("B1", std::string(40, 'W'));
  sheet->Columns("B")->AutoFit();
  const auto seen = application->ActiveWindow()->VisibleRange();
  EXPECT_LT(seen->Columns()->Count(), columns);
  EXPECT_GT(seen->Width(), width - standard) << "the last column in part";
  EXPECT_LT(seen->Columns()->Item(seen->Columns()->Count())->Left(), width);
  EXPECT_EQ(seen->Rows()->Count(), before->Rows()->Count());
}

TEST_P(WindowOnSheet, ShowsTheSheetInFront) {
  const std::string before = Seen();
  Put("B1", std::string(40, 'W'));
  sheet->Columns("B")->AutoFit();
  sheets->Add();
  EXPECT_EQ(Seen(), before);
  EXPECT_EQ(application->ActiveWindow()->VisibleRange()->Worksheet()->Name(), "Sheet2");
  EXPECT_EQ(application->ActiveWindow()->TypeName(), "Window");
}

MIRELO_AGAINST_ALL(RangePlace);
MIRELO_AGAINST_ALL(WindowOnSheet);

class ChartBesideColumns : public ChartedSheet {};

TEST_P(ChartBesideColumns, StaysBesideThemWhenTheyGetOtherWidths) {
  const ShapePtr shape = ShapeOf(AddChart());
  shape->Left(Range("D1")->Left());
  const double width = shape->Width();
  Range("B1")->ColumnWidth(30);
  EXPECT_EQ(shape->Left(), Range("D1")->Left());
  Put("C1", "a text that is wider than its column");
  sheet->Columns("C")->AutoFit();
  EXPECT_EQ(shape->Left(), Range("D1")->Left());
  Range("B1")->ColumnWidth(2);
  EXPECT_EQ(shape->Left(), Range("D1")->Left());
  EXPECT_EQ(shape->Width(), width);
  Range("E1")->ColumnWidth(30);
  EXPECT_EQ(shape->Left(), Range("D1")->Left());
  EXPECT_GT(shape->Width(), width) << "it grows with the cells beneath";
}

MIRELO_AGAINST_ALL(ChartBesideColumns);

}  // namespace
}  // namespace mirelo::testing
