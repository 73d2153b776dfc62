#include "app/quote_output.h"

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

TEST(JsonLine, KeepsColumnOrderAndWritesNumbersAsNumbers) {
  EXPECT_EQ(JsonLine({"Ticker", "Last", "Date"}, {"MSFT", "27.5", "11/21/2026"}).Bytes(),
            "{\"Ticker\":\"MSFT\",\"Last\":27.5,\"Date\":\"11/21/2026\"}\n");
}

TEST(JsonLine, EscapesWhatATerminalWouldObey) {
  EXPECT_EQ(JsonLine({"a\a"}, {"\033\u007F\u0090\u202E\n\\é"}).Bytes(),
            "{\"a\\u0007\":\"\\u001b\\u007F\\u0090\\u202E\\n\\\\é\"}\n");
}

TEST(JsonLine, WritesAnEmptyCellAsNull) { EXPECT_EQ(JsonLine({"Tick"}, {""}).Bytes(), "{\"Tick\":null}\n"); }

TEST(JsonLine, SurvivesTextThatIsNoUtf8) {
  EXPECT_EQ(JsonLine({"Ticker"}, {"\xFF"}).Bytes(), "{\"Ticker\":\"\xEF\xBF\xBD\"}\n");
}

}  // namespace
}  // namespace mirelo::app
