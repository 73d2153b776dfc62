#include "adapters/csv/csv_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <limits>

namespace mirelo::csv {
namespace {

using host::DataRow;

std::string Text(const std::string& text) {
  const std::string line = Line({text});
  return line.substr(0, line.size() - 1);
}

TEST(CsvRow, HasAFieldForEachValue) {
  EXPECT_EQ(Line({std::string("MSFT"), 27.5, {}, std::int64_t{1200}}), "MSFT,27.5,,1200\n");
}

TEST(CsvRow, HasNumbersThatAreReadBackAsTheVerySame) {
  const double numbers[] = {1.0 / 3,
                            0.1 + 0.2,
                            1e300,
                            -1e-7,
                            123456789.123456789,
                            std::numeric_limits<double>::denorm_min(),
                            std::numeric_limits<double>::max()};
  for (const double number : numbers)
    EXPECT_EQ(std::strtod(ExactNumberText(number).c_str(), nullptr), number);
}

TEST(CsvRow, WritesNumbersWithoutAnExponentWherePeopleDo) {
  EXPECT_EQ(ExactNumberText(100000), "100000");
  EXPECT_EQ(ExactNumberText(12345678901234), "12345678901234");
  EXPECT_EQ(ExactNumberText(0.0005), "0.0005");
  EXPECT_EQ(ExactNumberText(-0.0), "0");
  EXPECT_EQ(ExactNumberText(-27), "-27");
}

TEST(CsvRow, QuotesWhatWouldOtherwiseSplit) {
  EXPECT_EQ(Text("a,b"), "\"a,b\"");
  EXPECT_EQ(Text("say \"x\""), "\"say \"\"x\"\"\"");
}

TEST(CsvRow, IsOneLineWhateverATextHolds) {
  EXPECT_EQ(Text("two\r\nlines\033[2J\xFF"), "two\\r\\nlines\\u001B[2J\\xFF");
}

TEST(CsvRow, LetsNoTextPassForAFormula) {
  EXPECT_EQ(Text("=1+1"), "'=1+1");
  EXPECT_EQ(Text("+1"), "'+1");
  EXPECT_EQ(Text("-x"), "'-x");
  EXPECT_EQ(Text("@SUM(A1,A2)"), "\"'@SUM(A1,A2)\"");
  EXPECT_EQ(Text("'x"), "''x") << "so that one apostrophe can be taken off again";
  EXPECT_EQ(Text("\t=1+1"), "\\t=1+1");
  EXPECT_EQ(Line({-1.5}), "-1.5\n") << "a number is none";
}

TEST(CsvHeader, TreatsNamesAsTexts) {
  EXPECT_EQ(HeaderLine({{"Last"}, {"52w Low"}, {"=a,b"}}), "Last,52w Low,\"'=a,b\"\n");
}

}  // namespace
}  // namespace mirelo::csv
