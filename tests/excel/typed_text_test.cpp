#include "conformance.h"

namespace mirelo::testing {
namespace {

class TypedText : public Spreadsheets {
 protected:
  void SetUp() override { Range("A1")->Clear(); }
};

TEST_P(TypedText, BecomesANumberInEveryFormOfOne) {
  const struct {
    const char* typed;
    double number;
    const char* format;
  } cases[] = {
      {"12", 12, "General"},
      {"-12.5", -12.5, "General"},
      {"+3", 3, "General"},
      {".5", 0.5, "General"},
      {"5.", 5, "General"},
      {" 7 ", 7, "General"},
      {"007", 7, "General"},
      {"1,234", 1234, "#,##0"},
      {"1,234,567.25", 1234567.25, "#,##0.00"},
      {"5%", 0.05, "0%"},
      {"12.5%", 0.125, "0.00%"},
      {"-5%", -0.05, "0%"},
      {"1E3", 1000, "0.00E+00"},
      {"2.5e-3", 0.0025, "0.00E+00"},
      {"$5", 5, "$#,##0_);[Red]($#,##0)"},
      {"-$5.25", -5.25, "$#,##0.00_);[Red]($#,##0.00)"},
      {"$1,000", 1000, "$#,##0_);[Red]($#,##0)"},
      {"(5)", -5, "General"},
      {"($5)", -5, "$#,##0_);[Red]($#,##0)"},
  };
  for (const auto& [typed, number, format] : cases) {
    SCOPED_TRACE(typed);
    Range("A1")->Clear();
    Put("A1", typed);
    EXPECT_EQ(Get("A1").TypeName(), "Double");
    EXPECT_EQ(Get("A1"), Variant(number));
    EXPECT_EQ(Range("A1")->NumberFormat(), Variant(format));
  }
}

TEST_P(TypedText, BecomesADateOrTimeInEveryFormOfOne) {
  const struct {
    const char* typed;
    double serial;
    const char* format;
  } cases[] = {
      {"1/20/2011", 40563, "m/d/yyyy"},
      {"01/20/11", 40563, "m/d/yyyy"},
      {"1-20-2011", 40563, "m/d/yyyy"},
      {"2011-01-20", 40563, "m/d/yyyy"},
      {"2011/1/20", 40563, "m/d/yyyy"},
      {"1/20/30", 10978, "m/d/yyyy"},
      {"1/20/29", 47138, "m/d/yyyy"},
      {"20-Jan-2011", 40563, "d-mmm-yy"},
      {"20 January 11", 40563, "d-mmm-yy"},
      {"Jan 20, 2011", 40563, "d-mmm-yy"},
      {"8:30", 8.5 / 24, "h:mm"},
      {"8:30:00", 8.5 / 24, "h:mm:ss"},
      {"8:30 PM", 20.5 / 24, "h:mm AM/PM"},
      {"8:30:00 pm", 20.5 / 24, "h:mm:ss AM/PM"},
      {"12:00 AM", 0, "h:mm AM/PM"},
      {"1/20/2011 6:00", 40563.25, "m/d/yyyy h:mm"},
      {"1/20/2011 6:00:00 PM", 40563.75, "m/d/yyyy h:mm"},
  };
  for (const auto& [typed, serial, format] : cases) {
    SCOPED_TRACE(typed);
    Range("A1")->Clear();
    Put("A1", typed);
    ASSERT_EQ(Get("A1").TypeName(), "Date");
    EXPECT_DOUBLE_EQ(Get("A1").ToDate().serial, serial);
    EXPECT_EQ(Range("A1")->NumberFormat(), Variant(format));
  }
}

TEST_P(TypedText, BecomesABooleanOrAnError) {
  Put("A1", "true");
  EXPECT_EQ(Get("A1").TypeName(), "Boolean");
  EXPECT_TRUE(Get("A1").ToBoolean());
  Put("A1", "FALSE");
  EXPECT_FALSE(Get("A1").ToBoolean());
  Put("A1", "#n/a");
  EXPECT_EQ(Get("A1"), Variant("#N/A"));
}

TEST_P(TypedText, StaysTextOtherwise) {
  for (const char* text : {"MSFT",        "N/A",        "-",
                           "+",           ".",          "1,23",
                           "1,2345",      "12,34,567",  ",5",
                           "1..2",        "1.2.3",      "5%%",
                           "$",           "$5%",        "--5",
                           "()",          "(-5)",       "5-",
                           "1E",          "1E+",        "E5",
                           "1e999",       "&H10",       "0x10",
                           "1 2",         "13/1/2011",  "2/30/2011",
                           "2/29/2011",   "1/20/123",   "0/1/2011",
                           "1/20/1899",   "25:00",      "8:60",
                           "8:30:60",     "13:00 PM",   "0:30 AM",
                           "8:30 XM",     "1/20/2011x", "1/20/2011 noon",
                           "20-Foo-2011", "January",    "Jan 2011",
                           "1/20",        "  ",         "\t5",
                           "#FOO!",       "52w Low",    "SnapShot( 60 sec)",
                           "True story"}) {
    SCOPED_TRACE(text);
    Put("A1", text);
    EXPECT_EQ(Get("A1").TypeName(), "String");
    EXPECT_EQ(Get("A1"), Variant(text));
    EXPECT_EQ(Range("A1")->NumberFormat(), Variant("General"));
  }
}

TEST_P(TypedText, WithALeadingEqualsSignIsText) {
  Put("A1", "=1+1");
  EXPECT_EQ(Get("A1"), Variant("=1+1"));
  EXPECT_EQ(Range("A1")->Text(), "=1+1");
}

TEST_P(TypedText, WithALeadingApostropheIsTheTextBehindIt) {
  Put("A1", "'12");
  EXPECT_EQ(Get("A1").TypeName(), "String");
  EXPECT_EQ(Get("A1"), Variant("12"));
  Put("A2", "'=x");
  EXPECT_EQ(Get("A2"), Variant("=x"));
}

TEST_P(TypedText, StaysTextInATextCell) {
  Range("A1")->NumberFormat("@");
  for (const char* text : {"12", "007", "1/20/2011", "TRUE", "5%", "#N/A", "=1"}) {
    SCOPED_TRACE(text);
    Put("A1", text);
    EXPECT_EQ(Get("A1").TypeName(), "String");
    EXPECT_EQ(Get("A1"), Variant(text));
  }
  EXPECT_EQ(Range("A1")->NumberFormat(), Variant("@"));
  Put("A1", "'12");
  EXPECT_EQ(Get("A1"), Variant("12")) << "the mark of text is no part of it here either";
}

TEST_P(TypedText, LeavesAFormatThatIsThereAlready) {
  Range("A1")->NumberFormat("0.000");
  Put("A1", "5%");
  EXPECT_EQ(Get("A1"), Variant(0.05));
  EXPECT_EQ(Range("A1")->NumberFormat(), Variant("0.000"));
}

MIRELO_AGAINST_ALL(TypedText);

}  // namespace
}  // namespace mirelo::testing
