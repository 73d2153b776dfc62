#include "app/output/quote_output.h"

#include <gtest/gtest.h>

namespace mirelo::app {
namespace {

TEST(CsvLine, JoinsFieldsWithCommas) { EXPECT_EQ(CsvLine({"MSFT", "27.5", ""}).Bytes(), "MSFT,27.5,\n"); }

TEST(CsvLine, QuotesWhatWouldOtherwiseSplit) {
  EXPECT_EQ(CsvLine({"a,b", "say \"x\""}).Bytes(), "\"a,b\",\"say \"\"x\"\"\"\n");
}

TEST(CsvLine, IsOneLineThatCanBeReadBack) {
  EXPECT_EQ(CsvLine({"two\nlines", "a\033[2J\u009B", "a\\b", "x\a,"}).Bytes(),
            "two\\nlines,a\\u001B[2J\\u009B,a\\\\b,\"x\\u0007,\"\n");
}

using day::QuoteRow;
using day::QuoteValue;
using day::Reading;
using day::ReadValue;

TEST(JsonLine, KeepsColumnOrderAndWritesNumbersAsNumbers) {
  const QuoteRow row{QuoteValue::Text("MSFT"), ReadValue(Reading::AsNumber, "27.50"),
                     ReadValue(Reading::AsMoment, "11/21/2026"), QuoteValue(0.0), QuoteValue(1.0 / 3)};
  EXPECT_EQ(JsonLine({"Ticker", "Last", "Date", "Change", "Bid"}, row).Bytes(),
            "{\"Ticker\":\"MSFT\",\"Last\":27.5,\"Date\":\"11/21/2026\",\"Change\":0,"
            "\"Bid\":0.3333333333333333}\n");
}

TEST(JsonLine, WritesATickerOfDigitsAsText) {
  EXPECT_EQ(JsonLine({"Ticker"}, {ReadValue(Reading::AsText, "0700")}).Bytes(), "{\"Ticker\":\"0700\"}\n");
}

TEST(JsonLine, WritesWholeNumbersWithoutAPoint) {
  QuoteRow row;
  for (const char* text : {"5", "-7.00", "12345678901", "1E+20"})
    row.push_back(ReadValue(Reading::AsNumber, text));
  EXPECT_EQ(JsonLine({"A", "B", "C", "D"}, row).Bytes(),
            "{\"A\":5,\"B\":-7,\"C\":12345678901,\"D\":1e+20}\n");
}

TEST(JsonLine, EscapesWhatATerminalWouldObey) {
  EXPECT_EQ(JsonLine({"a\a"}, {QuoteValue::Text("\033\u007F\u0090\u202E\n\\é")}).Bytes(),
            "{\"a\\u0007\":\"\\u001b\\u007F\\u0090\\u202E\\n\\\\é\"}\n");
}

TEST(JsonLine, WritesAnEmptyCellAsNull) {
  EXPECT_EQ(JsonLine({"Tick"}, {QuoteValue()}).Bytes(), "{\"Tick\":null}\n");
}

TEST(JsonLine, SurvivesTextThatIsNoUtf8) {
  EXPECT_EQ(JsonLine({"Ticker"}, {QuoteValue::Text("\xFF")}).Bytes(), "{\"Ticker\":\"\xEF\xBF\xBD\"}\n");
}

}  // namespace
}  // namespace mirelo::app
