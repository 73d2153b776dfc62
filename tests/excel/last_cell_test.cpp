#include "conformance.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class LastCell : public Spreadsheets {
 protected:
  std::string Now() { return sheet->Cells(1, 1)->SpecialCells(xlCellTypeLastCell)->Address(false, false); }
};

TEST_P(LastCell, OfANewSheetIsA1) { EXPECT_EQ(Now(), "A1"); }

TEST_P(LastCell, LiesInTheLastRowAndTheLastColumnThatAreFilled) {
  Put("B9", 1.0);
  Put("F2", 2.0);
  EXPECT_EQ(Now(), "F9") << "where the two meet, though that cell is empty";
  EXPECT_TRUE(Get(Now()).IsEmpty());
}

TEST_P(LastCell, IsTheSameFromEveryRange) {
  Put("C4", 1.0);
  for (const char* address : {"A1", "A1:B2", "XFD1048576", "A:A"})
    EXPECT_EQ(Range(address)->SpecialCells(xlCellTypeLastCell)->Address(), "$C$4") << address;
}

TEST_P(LastCell, CountsCellsThatAreFormattedButEmpty) {
  Put("A1", 1.0);
  Range("B2:D36002")->NumberFormat("0.00");
  EXPECT_EQ(Now(), "D36002");
  Range("F3")->Interior()->ColorIndex(6);
  EXPECT_EQ(Now(), "F36002");
}

TEST_P(LastCell, DoesNotCountFormatsOfWholeColumns) {
  Put("B3", 1.0);
  Range("D:E")->Font()->Bold(true);
  EXPECT_EQ(Now(), "B3");
  Range("D4")->Font()->Bold(false);
  EXPECT_EQ(Now(), "D4") << "an exception is a format of its own";
}

TEST_P(LastCell, CountsTheRowAloneOfFormatsOfWholeRows) {
  Put("B3", 1.0);
  Range("7:7")->Font()->Bold(true);
  EXPECT_EQ(Now(), "B7");
}

TEST_P(LastCell, NoLongerCountsWhatWasCleared) {
  Put("A1:C9", 1.0);
  Range("D3:D20")->NumberFormat("0.00");
  EXPECT_EQ(Now(), "D20");
  Range("D3:D20")->Clear();
  EXPECT_EQ(Now(), "C9");
  Range("A9:C9")->ClearContents();
  EXPECT_EQ(Now(), "C8");
  sheet->Cells()->Clear();
  EXPECT_EQ(Now(), "A1");
}

TEST_P(LastCell, GoesOnCountingFormatsWhenTheContentsAreCleared) {
  Range("B2:C5")->NumberFormat("0.00");
  Put("B2:C5", 1.0);
  Range("B2:C5")->ClearContents();
  EXPECT_EQ(Now(), "C5");
}

TEST_P(LastCell, FollowsDeletedRows) {
  Put("A1:C9", 1.0);
  sheet->Rows("2:4")->Delete(xlShiftUp);
  EXPECT_EQ(Now(), "C6");
}

TEST_P(LastCell, HasNothingBelowAndToItsRight) {
  Put("C4", 1.0);
  const auto last = Range("A1")->SpecialCells(xlCellTypeLastCell);
  EXPECT_EQ(last->End(xlDown)->Row(), RowCount());
  EXPECT_EQ(last->End(xlToRight)->Column(), ColumnCount());
}

TEST_P(LastCell, MayBeTheSheetsLast) {
  sheet->Cells(RowCount(), ColumnCount())->Value(1.0);
  EXPECT_EQ(Now(), "XFD1048576");
}

TEST_P(LastCell, IsTheOnlySpecialCell) {
  EXPECT_EQ(NumberOf([&] { Range("A1")->SpecialCells(static_cast<XlCellType>(2)); }), 1004);
}

MIRELO_AGAINST_ALL(LastCell);

}  // namespace
}  // namespace mirelo::testing
