#include "day/quote_value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "automation/date.h"

namespace mirelo::day {
namespace {

Variant Cell(Reading reading, const std::string& text) { return ReadValue(reading, text).ToCell(); }

struct NumberCase {
  std::string text;
  double number;
};

TEST(ReadValue, TakesWhatIsANumberAsAWholeForOne) {
  for (const auto& [text, number] : {
           NumberCase{"28.35", 28.35},
           {"28.50", 28.5},
           {" 5", 5},
           {"5 ", 5},
           {"+3", 3},
           {"-0.10", -0.1},
           {"3-", -3},
           {".5", 0.5},
           {"0", 0},
           {"1,234.5", 1234.5},
           {"5E2", 500},
           {"5D2", 500},
           {"&HFF", 255},
           {"0.1000000000000000055511151231257827", 0.1},
           {"123456789012345678", 123456789012345678.0},
       }) {
    SCOPED_TRACE(text);
    const Variant cell = Cell(Reading::AsNumber, text);
    ASSERT_EQ(cell.type(), Variant::Type::Double);
    EXPECT_EQ(cell.ToDouble(), number);
    EXPECT_EQ(ReadValue(Reading::AsNumber, text).ToText(), text) << "shown as it came";
  }
  EXPECT_TRUE(std::signbit(Cell(Reading::AsNumber, "-0").ToDouble()));
}

TEST(ReadValue, LeavesAsTextWhatIsNoNumber) {
  for (const std::string text : {"N/A", "1e400", "-1e400", "$5", "50%", "=1+1", "'5", "1/2", "12/31/2026",
                                 "1.2.3", "-", "nan", "inf", "+", "5 5x", "TRUE", "#N/A", "09:30:00"}) {
    SCOPED_TRACE(text);
    const Variant cell = Cell(Reading::AsNumber, text);
    ASSERT_TRUE(cell.IsText());
    EXPECT_EQ(*cell.IfText(), "'" + text) << "with an apostrophe, lest a spreadsheet makes something of it";
    EXPECT_EQ(ReadValue(Reading::AsNumber, text).ToText(), text);
  }
}

TEST(ReadValue, TakesDatesAndTimesForMomentsWhereTheColumnHoldsThem) {
  const Date new_years_eve = ToDate({.year = 2026, .month = 12, .day = 31});
  for (const std::string text : {"12/31/2026", "2026-12-31", "December 31, 2026"}) {
    SCOPED_TRACE(text);
    const Variant cell = Cell(Reading::AsMoment, text);
    ASSERT_EQ(cell.type(), Variant::Type::Date);
    EXPECT_EQ(cell.ToDate(), new_years_eve);
    EXPECT_EQ(ReadValue(Reading::AsMoment, text).ToText(), text);
  }
  EXPECT_EQ(Cell(Reading::AsMoment, "06:00:00").ToDate(), Date{0.25});
  for (const std::string text : {"N/A", "20110120", "31.12.2026 25:00", "5", "28.35"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Cell(Reading::AsMoment, text), Variant("'" + text));
  }
}

TEST(ReadValue, TakesATimeForOneWhateverMarkTheMachinePartsItBy) {
  for (const std::string text : {"06:00:00", "06.00.00", "6-00-00", "06 00 00"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Cell(Reading::AsTime, text), Variant(Date{0.25}));
    EXPECT_EQ(ReadValue(Reading::AsTime, text).ToText(), text);
  }
  EXPECT_EQ(Cell(Reading::AsTime, "10.11.12"), Cell(Reading::AsTime, "10:11:12")) << "no day in October";
  for (const std::string text : {"N/A", "25.00.00", "5", "5.", ".5", "1.2.3.4"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Cell(Reading::AsTime, text), Variant("'" + text));
  }
}

TEST(ReadValue, TakesATickerForTextWhateverItLooksLike) {
  for (const std::string text : {"MSFT", "0700", "1E5", "MAR1", "TRUE", "=A1", "1/2"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Cell(Reading::AsText, text), Variant("'" + text));
  }
}

TEST(ReadValue, TakesAnEmptyTextForNothing) {
  for (const Reading reading : {Reading::AsText, Reading::AsMoment, Reading::AsNumber}) {
    EXPECT_TRUE(ReadValue(reading, "").IsNothing());
    EXPECT_TRUE(Cell(reading, "").IsEmpty());
    EXPECT_EQ(ReadValue(reading, "").ToText(), "");
    EXPECT_EQ(ReadValue(reading, ""), QuoteValue());
  }
}

TEST(ReadValue, LeavesATextThatNoCellTakesToBeCut) {
  const std::string zeros(std::size_t{kLongestText}, '0');
  EXPECT_EQ(ReadValue(Reading::AsNumber, zeros).kind(), QuoteValue::Kind::Number);
  EXPECT_EQ(ReadValue(Reading::AsNumber, zeros + "5").kind(), QuoteValue::Kind::Text);
  EXPECT_TRUE(IsTooLong(zeros + "5"));
  EXPECT_FALSE(IsTooLong(zeros));
}

TEST(ReadValue, GoesByTheColumnsNameInAnyCase) {
  EXPECT_EQ(ReadingOf("ticker"), Reading::AsText);
  EXPECT_EQ(ReadingOf("DATE"), Reading::AsMoment);
  EXPECT_EQ(ReadingOf("Time"), Reading::AsTime);
  EXPECT_EQ(ReadingOf("52w High"), Reading::AsNumber);
  EXPECT_EQ(ReadingOf("no such column"), Reading::AsNumber);
}

TEST(QuoteValue, KeepsAStreamedNumberAsItIs) {
  const double odd = 0.1 + 0.2;
  EXPECT_EQ(QuoteValue(odd).ToCell().ToDouble(), odd);
  EXPECT_EQ(QuoteValue(odd).ToText(), "0.3");
  EXPECT_FALSE(std::signbit(QuoteValue(-0.0).ToCell().ToDouble())) << "no cell shows -0.00";
}

TEST(QuoteValue, ShowsWhatIsNoNumberAsText) {
  EXPECT_EQ(QuoteValue(std::nan("")).ToCell(), Variant("'1.#QNAN"));
  EXPECT_EQ(QuoteValue(-std::numeric_limits<double>::infinity()).ToCell(), Variant("'-1.#INF"));
}

TEST(QuoteValue, IsComparedByWhatItIsNotByHowItWasWritten) {
  EXPECT_EQ(ReadValue(Reading::AsNumber, "28.50"), ReadValue(Reading::AsNumber, "28.5"));
  EXPECT_EQ(ReadValue(Reading::AsNumber, "28.50"), QuoteValue(28.5));
  EXPECT_NE(ReadValue(Reading::AsNumber, "28.5"), ReadValue(Reading::AsText, "28.5"));
  EXPECT_NE(QuoteValue(0.0), QuoteValue());
  QuoteValue value(1.0);
  value = {};
  EXPECT_EQ(value, QuoteValue());
  EXPECT_NE(QuoteValue::Text("a"), QuoteValue::Text("b"));
  EXPECT_EQ(ReadValue(Reading::AsMoment, "01/20/2011"), ReadValue(Reading::AsMoment, "1/20/2011"));
  EXPECT_NE(ReadValue(Reading::AsMoment, "01/20/2011"), ReadValue(Reading::AsMoment, "01/21/2011"));
}

TEST(QuoteValue, HasTheNumberAtTheBeginningOfItsTextWhereItIsNone) {
  EXPECT_EQ(ReadValue(Reading::AsNumber, "50%").ToNumber(), 50);
  EXPECT_EQ(ReadValue(Reading::AsNumber, "N/A").ToNumber(), 0);
  EXPECT_EQ(QuoteValue().ToNumber(), 0);
  EXPECT_EQ(ReadValue(Reading::AsNumber, "1,234.5").ToNumber(), 1234.5);
}

}  // namespace
}  // namespace mirelo::day
