#include "conformance.h"

namespace mirelo::testing {
namespace {

class Addresses : public Spreadsheets {};

TEST_P(Addresses, AreReadInEveryForm) {
  const struct {
    const char* text;
    const char* address;
  } cases[] = {
      {"A1", "$A$1"},         {"b2", "$B$2"},         {"$C$3", "$C$3"},       {"C$3", "$C$3"},
      {"A1:C3", "$A$1:$C$3"}, {"C3:A1", "$A$1:$C$3"}, {"A3:C1", "$A$1:$C$3"}, {"a1:$C$3", "$A$1:$C$3"},
      {"Z1", "$Z$1"},         {"AA1", "$AA$1"},       {"AZ1", "$AZ$1"},       {"BA1", "$BA$1"},
      {"ZZ1", "$ZZ$1"},       {"AAA1", "$AAA$1"},     {"A:C", "$A:$C"},       {"C:A", "$A:$C"},
      {"$B:$B", "$B:$B"},     {"3:5", "$3:$5"},       {"5:3", "$3:$5"},       {"$4:$4", "$4:$4"},
      {"A1:A1", "$A$1"},
  };
  for (const auto& [text, address] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Range(text)->Address(), address);
  }
}

TEST_P(Addresses, RaiseError1004ForOtherText) {
  for (const char* text : {"",     "A",        "1",   "A0",    "0:3",    "A1:",   ":A1",
                           "A1:B", "A1:2",     "A:2", "1A",    "A-1",    "A 1",   " A1",
                           "A1 ",  "A1:B2:C3", "$",   "$$A$1", "Sheet1", "AAAA1", "A99999999999999999999",
                           "Ä1"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(NumberOf([&] { Range(text); }), 1004);
  }
}

TEST_P(Addresses, EndWithTheSheet) {
  const std::string foot = std::to_string(RowCount());
  const std::string below = std::to_string(RowCount() + 1);
  const auto corner = sheet->Cells(RowCount(), ColumnCount());
  EXPECT_EQ(Range("A" + foot)->Row(), RowCount());
  EXPECT_EQ(Range(corner->Address())->Column(), ColumnCount());
  EXPECT_EQ(NumberOf([&] { Range("A" + below); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(RowCount(), ColumnCount() + 1); }), 1004);
}

TEST_P(Addresses, AreWrittenAbsoluteUnlessToldOtherwise) {
  const auto cell = Range("H2");
  EXPECT_EQ(cell->Address(), "$H$2");
  EXPECT_EQ(cell->Address(false, false), "H2");
  EXPECT_EQ(cell->Address(true, false), "H$2");
  EXPECT_EQ(cell->Address(false, true), "$H2");
  EXPECT_EQ(Range("A2:C4")->Address(false, false), "A2:C4");
  EXPECT_EQ(Range("A:C")->Address(false, false), "A:C");
  EXPECT_EQ(Range("2:4")->Address(false, false), "2:4");
}

TEST_P(Addresses, OfTheWholeSheetAreItsRows) {
  EXPECT_EQ(sheet->Cells()->Address(), "$1:$" + std::to_string(RowCount()));
}

TEST_P(Addresses, OfTwoCornersSpanTheSmallestRangeAroundBoth) {
  EXPECT_EQ(sheet->Range("B5", "C2")->Address(), "$B$2:$C$5");
  EXPECT_EQ(sheet->Range("A1:B2", "D4")->Address(), "$A$1:$D$4");
  EXPECT_EQ(sheet->Range(*sheet->Cells(4, 4), *sheet->Cells(2, 1))->Address(), "$A$2:$D$4");
  EXPECT_EQ(NumberOf([&] { sheet->Range("A1", "nowhere"); }), 1004);
}

TEST_P(Addresses, OfAnotherSheetsRangesAreRefused) {
  const auto other = sheets->Add();
  EXPECT_EQ(NumberOf([&] { sheet->Range(*sheet->Cells(1, 1), *other->Cells(2, 2)); }), 1004);
}

TEST_P(Addresses, OfRowsAndColumnsMayNameOneOrSeveral) {
  EXPECT_EQ(sheet->Rows("6:8")->Address(), "$6:$8");
  EXPECT_EQ(sheet->Rows("6")->Address(), "$6:$6");
  EXPECT_EQ(sheet->Rows("6:8")->Count(), 3);
  EXPECT_EQ(sheet->Columns("B:D")->Address(), "$B:$D");
  EXPECT_EQ(sheet->Columns("B")->Address(), "$B:$B");
  EXPECT_EQ(sheet->Columns("B:D")->Count(), 3);
  EXPECT_EQ(NumberOf([&] { sheet->Rows("B"); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Rows("0:2"); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Columns("2"); }), 1004);
}

MIRELO_AGAINST_ALL(Addresses);

}  // namespace
}  // namespace mirelo::testing
