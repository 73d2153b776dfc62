#include "conformance.h"

namespace mirelo::testing {
namespace {

class Blocks : public Spreadsheets {
 protected:
  // Numbers row * 10 + column, counted from 1, in an array of these lower bounds.
  static VariantArray Table(std::int32_t rows, std::int32_t columns, std::int32_t lower = 1) {
    VariantArray table(lower, lower + rows - 1, lower, lower + columns - 1);
    for (std::int32_t row = 0; row < rows; ++row) {
      for (std::int32_t column = 0; column < columns; ++column) {
        table(lower + row, lower + column) = (row + 1) * 10.0 + column + 1;
      }
    }
    return table;
  }
};

TEST_P(Blocks, ReadAsArraysWithBothLowerBounds1) {
  Put("B2", 12.0);
  Put("C3", "x");
  const Variant value = Get("B2:D3");
  ASSERT_TRUE(value.IsArray());
  const VariantArray& array = value.AsArray();
  EXPECT_EQ(array.Dimensions(), 2);
  EXPECT_EQ(array.LBound(1), 1);
  EXPECT_EQ(array.UBound(1), 2);
  EXPECT_EQ(array.LBound(2), 1);
  EXPECT_EQ(array.UBound(2), 3);
  EXPECT_EQ(array(1, 1), Variant(12.0));
  EXPECT_EQ(array(2, 2), Variant("x"));
  EXPECT_TRUE(array(2, 3).IsEmpty());
}

TEST_P(Blocks, OfOneRowOrColumnStayTwoDimensional) {
  EXPECT_EQ(Get("A2:C2").AsArray().UBound(1), 1);
  EXPECT_EQ(Get("A2:C2").AsArray().UBound(2), 3);
  EXPECT_EQ(Get("A2:A4").AsArray().UBound(2), 1);
}

TEST_P(Blocks, OfASingleCellAreNoArray) { EXPECT_FALSE(Get("A1:A1").IsArray()); }

TEST_P(Blocks, AreWrittenCellByCellWhateverTheBounds) {
  for (const std::int32_t lower : {0, 1, -5}) {
    SCOPED_TRACE(lower);
    sheet->Cells()->Clear();
    Put("B3:D4", Table(2, 3, lower));
    EXPECT_EQ(Get("B3"), Variant(11.0));
    EXPECT_EQ(Get("D3"), Variant(13.0));
    EXPECT_EQ(Get("B4"), Variant(21.0));
    EXPECT_EQ(Get("D4"), Variant(23.0));
  }
}

TEST_P(Blocks, ComeBackAsTheyWereWritten) {
  const auto range = Range("C3")->Resize(200, 7);
  range->Value(Table(200, 7));
  const Variant back = range->Value();
  const VariantArray& array = back.AsArray();
  for (std::int32_t row = 1; row <= 200; ++row) {
    for (std::int32_t column = 1; column <= 7; ++column) {
      ASSERT_EQ(array(row, column), Variant(row * 10.0 + column)) << row << ", " << column;
    }
  }
}

TEST_P(Blocks, LoseWhatFindsNoCell) {
  Put("A1:B1", Table(3, 3));
  EXPECT_EQ(Get("B1"), Variant(12.0));
  EXPECT_TRUE(Get("C1").IsEmpty());
  EXPECT_TRUE(Get("A2").IsEmpty());
}

TEST_P(Blocks, LeaveCellsThatTheyDoNotReachNotAvailable) {
  Put("A1:C3", Table(2, 2));
  EXPECT_EQ(Get("B2"), Variant(22.0));
  EXPECT_EQ(Get("C1"), Variant("#N/A"));
  EXPECT_EQ(Get("A3"), Variant("#N/A"));
}

TEST_P(Blocks, OfOneRowRepeatDownAndOfOneColumnAcross) {
  Put("A1:B3", Table(1, 2));
  EXPECT_EQ(Get("A3"), Variant(11.0));
  EXPECT_EQ(Get("B3"), Variant(12.0));
  Put("D1:F2", Table(2, 1));
  EXPECT_EQ(Get("F1"), Variant(11.0));
  EXPECT_EQ(Get("F2"), Variant(21.0));
}

TEST_P(Blocks, OfOneDimensionAreARow) {
  Put("A1:C2", VariantArray::OfTexts({"Ticker", "Last", "Bid"}));
  EXPECT_EQ(Get("A1"), Variant("Ticker"));
  EXPECT_EQ(Get("C1"), Variant("Bid"));
  EXPECT_EQ(Get("C2"), Variant("Bid"));
}

TEST_P(Blocks, WithoutElementsAreRefused) {
  EXPECT_EQ(NumberOf([&] { Put("A1:C1", VariantArray()); }), 13);
}

TEST_P(Blocks, GiveASingleCellTheirFirstElement) {
  Put("A1", Table(2, 2));
  EXPECT_EQ(Get("A1"), Variant(11.0));
}

TEST_P(Blocks, ClearCellsByEmptyElements) {
  Put("A1:B2", "x");
  VariantArray table = Table(2, 2);
  table(1, 2) = Variant();
  Put("A1:B2", table);
  EXPECT_EQ(Get("A1"), Variant(11.0));
  EXPECT_TRUE(Get("B1").IsEmpty());
}

TEST_P(Blocks, TakeTextAsTyped) {
  VariantArray quotes(1, 2, 1, 3);
  quotes(1, 1) = "MSFT";
  quotes(1, 2) = "1/20/2011";
  quotes(1, 3) = "28.35";
  quotes(2, 1) = "IBM";
  quotes(2, 2) = "1/21/2011";
  quotes(2, 3) = "155.69";
  Put("A3:C4", quotes);
  EXPECT_EQ(Get("A3"), Variant("MSFT"));
  EXPECT_EQ(Get("B4").TypeName(), "Date");
  EXPECT_EQ(Get("B4").ToDate().serial, 40564.0);
  EXPECT_EQ(Get("C4"), Variant(155.69));
  EXPECT_EQ(Range("B3:B4")->NumberFormat(), Variant("m/d/yyyy"));
  EXPECT_EQ(Range("C3:C4")->NumberFormat(), Variant("General"));
}

TEST_P(Blocks, TooLargeForAnArrayRaiseError7) {
  EXPECT_EQ(NumberOf([&] { sheet->Cells()->Value(); }), 7);
  EXPECT_EQ(NumberOf([&] { sheet->Cells()->Value("x"); }), 7);
  sheet->Cells()->Value(Variant());
  EXPECT_TRUE(Get("A1").IsEmpty());
}

MIRELO_AGAINST_ALL(Blocks);

}  // namespace
}  // namespace mirelo::testing
