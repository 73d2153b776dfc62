#include "conformance.h"

namespace mirelo::testing {
namespace {

class DisplayedText : public Spreadsheets {
 protected:
  struct Case {
    Variant value;
    const char* format;
    const char* shown;
  };
  void Check(const std::vector<Case>& cases) {
    for (const auto& [value, format, shown] : cases) {
      SCOPED_TRACE(std::string(format) + " -> " + shown);
      Range("A1")->Clear();
      Range("A1")->NumberFormat(format);
      Put("A1", value);
      EXPECT_EQ(Range("A1")->Text(), shown);
    }
  }
};

TEST_P(DisplayedText, OfNumbersInTheGeneralForm) {
  Check({{0.0, "General", "0"},
         {12.0, "General", "12"},
         {-1.5, "General", "-1.5"},
         {0.1 + 0.2, "General", "0.3"},
         {1234567.891, "General", "1234567.891"},
         {12345678901.0, "General", "12345678901"}});
}

TEST_P(DisplayedText, OfNumbersThatTakeMoreThanElevenPlacesInTheGeneralForm) {
  Check({{1.0 / 3, "General", "0.333333333"},
         {123456789012.0, "General", "1.23457E+11"},
         {0.00001, "General", "1E-05"},
         {-2.5e20, "General", "-2.5E+20"}});
}

TEST_P(DisplayedText, OfNumbersInPlaces) {
  Check({{1234.567, "0.00", "1234.57"},
         {0.5, "0", "1"},
         {2.675, "0.00", "2.68"},
         {999.995, "0.00", "1000.00"},
         {0.04, "0.0", "0.0"},
         {0.05, "0.0", "0.1"},
         {1e300, "0",
          "10000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
          "00000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
          "00000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
          "0000000"},
         {0.5, "#.##", ".5"},
         {5.0, "000", "005"},
         {1234567.0, "#,##0", "1,234,567"},
         {123.0, "#,##0", "123"},
         {0.0, "#,##0", "0"},
         {0.0, "#", ""},
         {-1234.5, "#,##0.00", "-1,234.50"},
         {-0.001, "0.00", "0.00"},
         {1.5, "?0.0?", " 1.5 "},
         {1234567.0, "0.0,,", "1.2"},
         {1234.0, "0,", "1"},
         {5.0, "00,000", "00,005"}});
}

TEST_P(DisplayedText, OfNumbersBySections) {
  Check({{0.25, "+ 0.00;- 0.00", "+ 0.25"},
         {-0.25, "+ 0.00;- 0.00", "- 0.25"},
         {0.0, "+ 0.00;- 0.00", "+ 0.00"},
         {0.0, "0;-0;\"nil\"", "nil"},
         {-5.0, "0;(0)", "(5)"},
         {-5.0, "[Red]0;[Blue](0)", "(5)"},
         {-5.0, "0;", ""},
         {5.0, "0 \"pcs\"", "5 pcs"},
         {5.0, "\\x0", "x5"},
         {5.0, "0_)", "5 "}});
}

TEST_P(DisplayedText, OfPercentagesAndPowersOfTen) {
  Check({{0.05, "0%", "5%"},
         {0.1234, "0.00%", "12.34%"},
         {12345.0, "0.00E+00", "1.23E+04"},
         {0.00123, "0.00E+00", "1.23E-03"},
         {9.999, "0.00E+00", "1.00E+01"},
         {12345.0, "##0.0E+0", "12.3E+3"},
         {1000.0, "0E-0", "1E3"},
         {0.0, "0.00E+00", "0.00E+00"},
         {-12345.0, "0.0E+00", "-1.2E+04"}});
}

TEST_P(DisplayedText, OfDatesAndTimes) {
  const Date moment{40563.3585};  // 20 January 2011, 08:36:14, a Thursday
  Check({{moment, "mm/dd/yyyy", "01/20/2011"},
         {moment, "m/d/yy", "1/20/11"},
         {moment, "hh:mm:ss", "08:36:14"},
         {moment, "h:mm AM/PM", "8:36 AM"},
         {Date{40563.0}, "h:mm AM/PM", "12:00 AM"},
         {moment, "dddd, mmmm d, yyyy", "Thursday, January 20, 2011"},
         {moment, "ddd d-mmm-yy", "Thu 20-Jan-11"},
         {moment, "mmmmm", "J"},
         {moment, "mm:ss", "36:14"},
         {moment, "yyyy\"y\" m\\m", "2011y 1m"},
         {Date{1.5}, "[h]:mm", "36:00"},
         {Date{0.5}, "[mm]:ss", "720:00"},
         {Date{0.25 / 86400}, "ss.00", "00.25"}});
}

TEST_P(DisplayedText, OfTimesWithALetterForTheHalfOfTheDay) {
  Check({{Date{40563.75}, "h:mm A/P", "6:00 P"}});
}

TEST_P(DisplayedText, OfTimesIsRoundedToWhatIsShown) { Check({{Date{0.99999999}, "hh:mm:ss", "00:00:00"}}); }

TEST_P(DisplayedText, OfDaysThatTheCalendarLacks) {
  Check({{Date{60.0}, "ddd d mmm yyyy", "Wed 29 Feb 1900"},
         {-1.0, "mm/dd/yyyy", "########"},
         {2958466.0, "mm/dd/yyyy", "########"},
         {2958465.9999999, "mm/dd/yyyy", "########"}});
}

TEST_P(DisplayedText, OfOtherValues) {
  Check({{true, "0.00", "TRUE"},
         {"MSFT", "0.00", "MSFT"},
         {"MSFT", "0;0;0;\"<\"@\">\"", "<MSFT>"},
         {"MSFT", "@", "MSFT"},
         {"#DIV/0!", "General", "#DIV/0!"}});
}

MIRELO_AGAINST_ALL(DisplayedText);

}  // namespace
}  // namespace mirelo::testing
