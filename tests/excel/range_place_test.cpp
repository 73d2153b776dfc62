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
  EXPECT_EQ(width, 48);
  EXPECT_EQ(height, 15);
  EXPECT_EQ(Range("C4:E9")->Left(), 2 * width);
  EXPECT_EQ(Range("C4:E9")->Top(), 3 * height);
  EXPECT_EQ(Range("C4:E9")->Width(), 3 * width);
  EXPECT_EQ(Range("C4:E9")->Height(), 6 * height);
}

TEST_P(RangePlace, EndsWhereTheNextOneBegins) {
  Put("B1", "a text that is wider than its column");
  Put("D1", "x");
  sheet->Columns("B:D")->AutoFit();
  EXPECT_GT(Range("B1")->Width(), 48);
  EXPECT_LT(Range("D1")->Width(), 48);
  double left = 0;
  for (std::int32_t column = 1; column <= 6; ++column) {
    const auto cell = sheet->Cells(1, column);
    EXPECT_EQ(cell->Left(), left) << column;
    left += cell->Width();
  }
  EXPECT_EQ(Range("A1:F1")->Width(), left);
}

TEST_P(RangePlace, IsMeasuredInWholePixels) {
  Put("B1", "a text that is wider than its column");
  sheet->Columns("B")->AutoFit();
  const double pixels = Range("B1")->Width() / 0.75;
  EXPECT_EQ(pixels, static_cast<std::int32_t>(pixels));
}

TEST_P(RangePlace, OfTheWholeSheetReachesToItsEnd) {
  const auto last = sheet->Cells(RowCount(), ColumnCount());
  EXPECT_EQ(sheet->Cells()->Width(), last->Left() + last->Width());
  EXPECT_EQ(sheet->Cells()->Height(), last->Top() + last->Height());
  EXPECT_EQ(sheet->Columns("C")->Height(), sheet->Cells()->Height());
  EXPECT_EQ(sheet->Rows("3")->Width(), sheet->Cells()->Width());
}

TEST_P(RangePlace, IsAsWideAsSoManyDigits) {
  EXPECT_EQ(Range("B1")->ColumnWidth(), Variant(8.43));
  Range("B1:C9")->ColumnWidth(20);
  EXPECT_EQ(Range("B7")->ColumnWidth(), Variant(20.0));
  EXPECT_EQ(Range("B1")->Width(), 145 * 0.75);
  EXPECT_EQ(Range("D1")->ColumnWidth(), Variant(8.43));
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
  EXPECT_EQ(Seen(), "A1:T27");
  EXPECT_EQ(application->ActiveWindow()->VisibleRange()->Width(), 960);
  EXPECT_EQ(application->ActiveWindow()->VisibleRange()->Height(), 405);
}

TEST_P(WindowOnSheet, ShowsFewerColumnsTheWiderTheyAre) {
  Put("B1", std::string(40, 'W'));
  sheet->Columns("B")->AutoFit();
  const auto seen = application->ActiveWindow()->VisibleRange();
  EXPECT_LT(seen->Columns()->Count(), 20);
  EXPECT_GE(seen->Width(), 960) << "the last column in part";
  const auto last = seen->Columns()->Item(seen->Columns()->Count());
  EXPECT_LT(last->Left(), 960);
  EXPECT_EQ(seen->Rows()->Count(), 27);
}

TEST_P(WindowOnSheet, ShowsTheSheetInFront) {
  Put("B1", std::string(40, 'W'));
  sheet->Columns("B")->AutoFit();
  sheets->Add();
  EXPECT_EQ(Seen(), "A1:T27");
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
