#include "conformance.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class Deletion : public Spreadsheets {
 protected:
  // Numbers 1, 2, ... down a column.
  void Count(std::string_view first_cell, std::int32_t count) {
    for (std::int32_t i = 1; i <= count; ++i) Range(first_cell)->Item(i, 1)->Value(i);
  }
};

TEST_P(Deletion, OfRowsMovesTheRowsBelowUp) {
  Count("A1", 9);
  Put("D8", "right");
  sheet->Rows("3:5")->Delete(xlShiftUp);
  const double expected[] = {1, 2, 6, 7, 8, 9};
  for (std::int32_t row = 1; row <= 6; ++row)
    EXPECT_EQ(sheet->Cells(row, 1)->Value(), Variant(expected[row - 1]));
  EXPECT_TRUE(Get("A7").IsEmpty());
  EXPECT_EQ(Get("D5"), Variant("right"));
}

TEST_P(Deletion, OfCellsMovesOnlyWhatLiesBelowThem) {
  Count("A1", 6);
  Count("B1", 6);
  Count("C1", 6);
  Range("B2:B3")->Delete(xlShiftUp);
  EXPECT_EQ(Get("B2"), Variant(4.0));
  EXPECT_EQ(Get("B4"), Variant(6.0));
  EXPECT_TRUE(Get("B5").IsEmpty());
  EXPECT_EQ(Get("A2"), Variant(2.0));
  EXPECT_EQ(Get("C6"), Variant(6.0));
}

TEST_P(Deletion, MovesFormats) {
  Range("B7")->NumberFormat("0.00");
  Range("B7")->Font()->Bold(true);
  Range("B7")->Interior()->ColorIndex(6);
  Range("B7")->Borders(xlEdgeBottom)->Weight(xlMedium);
  Range("B3")->Interior()->ColorIndex(3);
  sheet->Rows("3:5")->Delete(xlShiftUp);
  EXPECT_EQ(Range("B4")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(Range("B4")->Font()->Bold(), Variant(true));
  EXPECT_EQ(Range("B4")->Interior()->ColorIndex(), Variant(6));
  EXPECT_EQ(Range("B4")->Borders(xlEdgeBottom)->Weight(), Variant(-4138));
  EXPECT_EQ(Range("B3")->Interior()->ColorIndex(), Variant(-4142));
  EXPECT_EQ(Range("B7")->NumberFormat(), Variant("General"));
}

TEST_P(Deletion, MovesComments) {
  Range("B3")->AddComment("gone");
  Range("B7")->AddComment("moves");
  Range("C7")->AddComment("stays");
  Range("B3:B5")->Delete(xlShiftUp);
  EXPECT_EQ(Range("B3")->Comment(), nullptr);
  ASSERT_NE(Range("B4")->Comment(), nullptr);
  EXPECT_EQ(Range("B4")->Comment()->Text(), "moves");
  EXPECT_EQ(Range("B7")->Comment(), nullptr);
  EXPECT_NE(Range("C7")->Comment(), nullptr);
}

TEST_P(Deletion, MovesAndShortensConditionalFormats) {
  const struct {
    const char* at;
    const char* deleted;
    const char* then_first;
    const char* then_last;
  } cases[] = {
      {"B5:B9", "2:3", "B3", "B7"},   {"B5:B9", "4:6", "B4", "B6"},   {"B5:B9", "6:7", "B5", "B7"},
      {"B5:B9", "8:20", "B5", "B7"},  {"B5:B9", "10:20", "B5", "B9"}, {"A5:C9", "B6:B7", "A5", "A9"},
      {"A5:C9", "B6:B7", "B5", "B7"}, {"A5:C9", "B6:B7", "C5", "C9"},
  };
  for (const auto& [at, deleted, then_first, then_last] : cases) {
    SCOPED_TRACE(std::string(at) + " without " + deleted);
    sheet->Cells()->Clear();
    Range(at)->FormatConditions()->Add(xlCellValue, xlGreater, "0");
    Range(deleted)->Delete(xlShiftUp);
    EXPECT_EQ(Range(then_first)->FormatConditions()->Count(), 1);
    EXPECT_EQ(Range(then_first)->Cells(0, 1)->FormatConditions()->Count(), 0);
    EXPECT_EQ(Range(then_last)->FormatConditions()->Count(), 1);
    EXPECT_EQ(Range(then_last)->Cells(2, 1)->FormatConditions()->Count(), 0);
  }
}

TEST_P(Deletion, OfAllItsCellsTakesAConditionalFormatAway) {
  Range("B5:B9")->FormatConditions()->Add(xlCellValue, xlGreater, "0");
  sheet->Rows("4:9")->Delete(xlShiftUp);
  EXPECT_EQ(sheet->Cells()->FormatConditions()->Count(), 0);
}

TEST_P(Deletion, LeavesColumnsFormattedToTheirFoot) {
  Range("B:B")->NumberFormat("0.00");
  sheet->Rows("3:5")->Delete(xlShiftUp);
  EXPECT_EQ(sheet->Cells(RowCount(), 2)->NumberFormat(), Variant("0.00"));
}

TEST_P(Deletion, LeavesRangesWhereTheyAre) {
  Count("A1", 6);
  const auto range = Range("A4:A5");
  sheet->Rows("2:3")->Delete(xlShiftUp);
  EXPECT_EQ(range->Address(), "$A$4:$A$5");
  EXPECT_EQ(range->Item(1)->Value(), Variant(6.0));
}

TEST_P(Deletion, BelowWhatIsFilledChangesNothing) {
  Count("A1", 3);
  sheet->Rows("5:1048576")->Delete(xlShiftUp);
  EXPECT_EQ(Get("A3"), Variant(3.0));
}

TEST_P(Deletion, OfAllRowsEmptiesTheSheet) {
  Count("A1", 3);
  Range("A2")->AddComment("x");
  sheet->Rows("1:1048576")->Delete(xlShiftUp);
  EXPECT_TRUE(Get("A1").IsEmpty());
  EXPECT_EQ(Range("A2")->Comment(), nullptr);
}

// Blocks of rows that begin and end around multiples of a power of two, where a store in blocks has its
// seams.
TEST_P(Deletion, IsRightInLongColumns) {
  constexpr std::int32_t kCount = 300;
  for (const std::int32_t first : {1, 2, 63, 64, 65, 128, 250}) {
    for (const std::int32_t length : {1, 2, 63, 64, 65, 129}) {
      SCOPED_TRACE(std::to_string(first) + "+" + std::to_string(length));
      VariantArray numbers(1, kCount, 1, 1);
      for (std::int32_t row = 1; row <= kCount; ++row) numbers(row, 1) = row;
      sheet->Cells()->ClearContents();
      Range("A1")->Resize(kCount, 1)->Value(numbers);
      sheet->Cells(first, 1)->Resize(length, 1)->Delete(xlShiftUp);
      const std::int32_t gone = std::min(length, kCount - first + 1);
      EXPECT_EQ(Range("A1048576")->End(xlUp)->Row(), std::max(kCount - gone, 1));
      for (const std::int32_t row : {first - 1, first, first + 1, first + 70}) {
        if (row < 1 || row > kCount - gone) continue;
        EXPECT_EQ(sheet->Cells(row, 1)->Value(), Variant(double(row < first ? row : row + gone))) << row;
      }
    }
  }
}

TEST_P(Deletion, IsRefusedInOtherDirections) {
  Count("A1", 3);
  EXPECT_EQ(NumberOf([&] { Range("A1")->Delete(static_cast<XlDeleteShiftDirection>(-4159)); }), 1004);
  EXPECT_EQ(NumberOf([&] { Range("A:A")->Delete(xlShiftUp); }), 1004);
  EXPECT_EQ(Get("A1"), Variant(1.0));
}

MIRELO_AGAINST_ALL(Deletion);

}  // namespace
}  // namespace mirelo::testing
