#include <limits>

#include "conformance.h"
#include "host/excel/font.h"

namespace mirelo::testing {
namespace {

class CellValues : public Spreadsheets {};

TEST_P(CellValues, AreEmptyAtFirst) {
  EXPECT_TRUE(Get("A1").IsEmpty());
  EXPECT_EQ(Range("A1")->Text(), "");
}

TEST_P(CellValues, KeepTheirKind) {
  const struct {
    Variant value;
    const char* type;
  } cases[] = {
      {std::int16_t{7}, "Double"}, {std::int32_t{70000}, "Double"}, {12.5, "Double"}, {true, "Boolean"},
      {"MSFT", "String"},          {Date{40563.25}, "Date"},
  };
  for (const auto& [value, type] : cases) {
    SCOPED_TRACE(type);
    Put("A1", value);
    EXPECT_EQ(Get("A1").TypeName(), type);
    EXPECT_EQ(Get("A1"), value);
    Range("A1")->Clear();
  }
}

TEST_P(CellValues, GoWhenEmptyIsWritten) {
  Put("A1:B2", 1.0);
  Put("A1", Variant());
  Put("B1", "");
  EXPECT_TRUE(Get("A1").IsEmpty());
  EXPECT_TRUE(Get("B1").IsEmpty());
  EXPECT_EQ(Get("A2"), Variant(1.0));
  Range("A1:B2")->ClearContents();
  EXPECT_TRUE(Get("A2").IsEmpty());
}

TEST_P(CellValues, FillARangeWithOneValue) {
  Put("B2:C3", "x");
  for (const char* address : {"B2", "C2", "B3", "C3"}) EXPECT_EQ(Get(address), Variant("x")) << address;
  EXPECT_TRUE(Get("A1").IsEmpty());
  EXPECT_TRUE(Get("D3").IsEmpty());
}

TEST_P(CellValues, ReadADateFromANumberInADateFormat) {
  Put("A1", 40563.25);
  Range("A1")->NumberFormat("mm/dd/yyyy hh:mm");
  EXPECT_EQ(Get("A1").TypeName(), "Date");
  EXPECT_EQ(Get("A1").ToDate().serial, 40563.25);
  Range("A1")->NumberFormat("0.00");
  EXPECT_EQ(Get("A1").TypeName(), "Double");
}

TEST_P(CellValues, GiveADateAFormatWhereThereIsNone) {
  Put("A1", Date{40563});
  Put("A2", Date{40563.25});
  Put("A3", Date{0.25});
  Range("A4")->NumberFormat("mm/dd/yyyy");
  Put("A4", Date{40563});
  EXPECT_EQ(Range("A1")->NumberFormat(), Variant("m/d/yyyy"));
  EXPECT_EQ(Range("A2")->NumberFormat(), Variant("m/d/yyyy h:mm"));
  EXPECT_EQ(Range("A3")->NumberFormat(), Variant("h:mm:ss AM/PM"));
  EXPECT_EQ(Range("A4")->NumberFormat(), Variant("mm/dd/yyyy"));
}

TEST_P(CellValues, CountTheDaysOf1900AsTheSpreadsheetDoes) {
  const struct {
    const char* typed;
    double number;
    const char* shown;
  } cases[] = {{"1/1/1900", 1, "1/1/1900"},
               {"2/28/1900", 59, "2/28/1900"},
               {"2/29/1900", 60, "2/29/1900"},  // a day that never was
               {"3/1/1900", 61, "3/1/1900"}};
  for (const auto& [typed, number, shown] : cases) {
    SCOPED_TRACE(typed);
    Put("A1", typed);
    EXPECT_EQ(Get("A1").TypeName(), "Date");
    EXPECT_EQ(Get("A1").ToDate().serial, number);
    EXPECT_EQ(Range("A1")->Text(), shown);
    Range("A1")->Clear();
  }
}

TEST_P(CellValues, RefuseDatesThatTheCalendarLacks) {
  Put("A1", "old");
  EXPECT_EQ(NumberOf([&] { Put("A1", Date{-1}); }), 1004);
  EXPECT_EQ(NumberOf([&] { Put("A1", Date{2'958'466}); }), 1004);
  EXPECT_EQ(Get("A1"), Variant("old"));
  Put("A1", Date{2'958'465});
  EXPECT_EQ(Range("A1")->Text(), "12/31/9999");
}

TEST_P(CellValues, TakeTextOf32767CharactersAndNoMore) {
  const std::string longest(32'767, 'x');
  Put("A1", longest);
  EXPECT_EQ(Get("A1"), Variant(longest));
  EXPECT_EQ(NumberOf([&] { Put("A1", longest + "x"); }), 1004);
  EXPECT_EQ(Get("A1"), Variant(longest));
  Put("A2", "'" + longest);
  EXPECT_EQ(Get("A2"), Variant(longest)) << "the apostrophe is no part of it";
  EXPECT_EQ(NumberOf([&] { Put("A2", "'" + longest + "x"); }), 1004);
}

TEST_P(CellValues, ShowNumbersThatAreNoneAsAnError) {
  Put("A1", std::numeric_limits<double>::infinity());
  Put("A2", std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(Get("A1"), Variant("#NUM!"));
  EXPECT_EQ(Get("A2"), Variant("#NUM!"));
}

TEST_P(CellValues, TakeTheValueOfARange) {
  Put("A1", 12.5);
  Put("B1", Variant(Range("A1")));
  EXPECT_EQ(Get("B1"), Variant(12.5));
}

TEST_P(CellValues, RefuseOtherObjectsAndArraysInArrays) {
  EXPECT_EQ(NumberOf([&] { Put("A1", Variant(Range("A1")->Font())); }), 13);
  EXPECT_EQ(NumberOf([&] { Put("A1", Variant(std::shared_ptr<Object>())); }), 13);
  VariantArray nested(1, 2);
  nested(2) = VariantArray(1, 1);
  Put("A1", "old");
  EXPECT_EQ(NumberOf([&] { Put("A1:B1", nested); }), 13);
  EXPECT_EQ(Get("A1"), Variant("old")) << "a block with one bad value is not written at all";
}

TEST_P(CellValues, KeepLettersOfAllScripts) {
  const std::string text = "Münchner Rück \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x93\x88";
  Put("A1", text);
  EXPECT_EQ(Get("A1"), Variant(text));
}

TEST_P(CellValues, ReplaceWhatIsNoText) {
  Put("A1", std::string("a\xFFz"));
  EXPECT_EQ(Get("A1"), Variant("a\xEF\xBF\xBDz"));
}

MIRELO_AGAINST_ALL(CellValues);

}  // namespace
}  // namespace mirelo::testing
