#include "conformance.h"

namespace mirelo::testing {
namespace {

class SheetName : public Spreadsheets {};

TEST_P(SheetName, TakesWhatASheetCanBear) {
  const std::string longest(31, 'x');
  const std::string thirty_one_letters_of_two_bytes = [] {
    std::string name;
    for (int i = 0; i < 31; ++i) name += "ü";
    return name;
  }();
  for (const std::string& name :
       {std::string("A"), std::string("Quotes_Vertical(MSFT)"), std::string("it's"), std::string(" "),
        std::string("A1"), longest, thirty_one_letters_of_two_bytes}) {
    SCOPED_TRACE(name);
    sheet->Name(name);
    EXPECT_EQ(sheet->Name(), name);
  }
}

TEST_P(SheetName, RaisesError1004ForWhatASheetCannotBearAndKeepsTheOldOne) {
  const std::string too_long(32, 'x');
  const std::string sixteen_pairs = [] {  // 16 characters of two UTF-16 units each
    std::string name;
    for (int i = 0; i < 16; ++i) name += "\xF0\x9F\x93\x88";
    return name;
  }();
  for (const std::string& name :
       {std::string(), too_long, sixteen_pairs, std::string("a:b"), std::string("a\\b"), std::string("a/b"),
        std::string("a?b"), std::string("a*b"), std::string("[ab"), std::string("ab]"), std::string("'ab"),
        std::string("ab'"), std::string("History"), std::string("HISTORY")}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(NumberOf([&] { sheet->Name(name); }), 1004);
    EXPECT_EQ(sheet->Name(), "Sheet1");
  }
}

TEST_P(SheetName, RaisesError1004ForAnotherSheetsNameInAnyCase) {
  const auto added = sheets->Add();
  EXPECT_EQ(NumberOf([&] { added->Name("Sheet1"); }), 1004);
  EXPECT_EQ(NumberOf([&] { added->Name("SHEET1"); }), 1004);
  EXPECT_EQ(added->Name(), "Sheet2");
}

TEST_P(SheetName, MayChangeItsOwnCase) {
  sheet->Name("SHEET1");
  EXPECT_EQ(sheet->Name(), "SHEET1");
}

MIRELO_AGAINST_ALL(SheetName);

}  // namespace
}  // namespace mirelo::testing
