#include "automation/number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/error_number.h"

namespace mirelo {
namespace {

using testing::NumberOf;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct NumberReading {
  const char* text;
  double value;
};
constexpr NumberReading kVals[] = {
    {"", 0},
    {"abc", 0},
    {"0", 0},
    {"60", 60},
    {"60 sec", 60},
    {"2457", 2457},
    {" 1615 198th", 1615198},
    {"\t12\n3", 123},
    {"-5", -5},
    {"+5", 5},
    {"- 5", -5},
    {"--5", 0},
    {"1.5", 1.5},
    {".5", 0.5},
    {"5.", 5},
    {".", 0},
    {"-.", 0},
    {"1.2.3", 1.2},
    {"1,234", 1},
    {"1e3", 1000},
    {"1E-2x", 0.01},
    {"1d3", 1000},
    {"1e", 1},
    {"1e+", 1},
    {"e3", 0},
    {"&HFF", 255},
    {"&hffff", -1},
    {"&HFFFF&", 65535},
    {"&H10000", 65536},
    {"&HFFFFFFFF", -1},
    {"&O17", 15},
    {"&o18", 1},
    {"&H", 0},
    {"&HG", 0},
    {"&", 0},
    {"$5", 0},
    {"1e-400", 0},
    {"0e400", 0},
    {"1\xC2\xA0"
     "2",
     1},
};

TEST(Val, IsTheLongestNumberAtTheStart) {
  for (const NumberReading& reading : kVals)
    EXPECT_EQ(Val(reading.text), reading.value) << '"' << reading.text << '"';
}

TEST(Val, IsInfiniteForANumberTooLarge) {
  EXPECT_EQ(Val("1e400"), kInfinity);
  EXPECT_EQ(Val("-1e400"), -kInfinity);
  EXPECT_EQ(Val("1e99999999999999999999"), kInfinity);
  EXPECT_EQ(Val("1e-99999999999999999999"), 0);
  EXPECT_EQ(Val(std::string(400, '9')), kInfinity);
  EXPECT_EQ(Val("0." + std::string(400, '0') + "1"), 0);
}

constexpr NumberReading kNumbers[] = {
    {"0", 0},
    {"5", 5},
    {"2.5", 2.5},
    {" 5 ", 5},
    {"\t5\r\n", 5},
    {"-5", -5},
    {"5-", -5},
    {"+5", 5},
    {"5+", 5},
    {"- 5", -5},
    {" 5 - ", -5},
    {".5", 0.5},
    {"5.", 5},
    {"1,234", 1234},
    {"1,234,567.25", 1234567.25},
    {"1,2,3", 123},
    {"1e3", 1000},
    {"1E+3", 1000},
    {"1.5e-3", 0.0015},
    {"1d3", 1000},
    {"&HFF", 255},
    {"&hffff", -1},
    {"&H8000", -32768},
    {"&HFFFF&", 65535},
    {"&H7FFFFFFF", 2147483647},
    {"&O17", 15},
    {" &H10 ", 16},
    {"1e-400", 0},
    {"007", 7},
    {"999999999999999", 999999999999999},
    {"9999999999999999", 1e16},
    {"1000000000000001", 1000000000000001},
};

TEST(ParseNumber, ReadsTheWholeText) {
  for (const NumberReading& reading : kNumbers) {
    SCOPED_TRACE(reading.text);
    const auto value = ParseNumber(reading.text);
    ASSERT_TRUE(value.has_value());
    EXPECT_EQ(*value, reading.value);
    EXPECT_TRUE(IsNumeric(reading.text));
  }
}

TEST(ParseNumber, TakesNothingElse) {
  for (const char* text : {"",
                           " ",
                           "abc",
                           "5 sec",
                           "12a",
                           "--5",
                           "-5-",
                           "+-5",
                           ".",
                           "-",
                           "1.2.3",
                           "1.2,3",
                           ",5",
                           "1 2",
                           "1e",
                           "1e3.5",
                           "e3",
                           "$5",
                           "5%",
                           "&H",
                           "&HG",
                           "&O8",
                           "&",
                           "-&H5",
                           "1e400",
                           "True",
                           "1/2",
                           "N/A",
                           "\xE2\x82\xAC"
                           "5"}) {
    EXPECT_FALSE(ParseNumber(text).has_value()) << '"' << text << '"';
    EXPECT_FALSE(IsNumeric(text)) << '"' << text << '"';
  }
}

TEST(ParseNumber, UsesTheSeparatorsOfTheRegion) {
  RegionalFormat german;
  german.decimal_separator = ",";
  german.group_separator = ".";
  EXPECT_EQ(ParseNumber("1.234,5", german), 1234.5);
  EXPECT_FALSE(ParseNumber("1,234.5", german).has_value());

  RegionalFormat french;
  french.decimal_separator = ",";
  french.group_separator = "\u202F";
  EXPECT_EQ(ParseNumber("1\u202F234,5", french), 1234.5);

  RegionalFormat without;
  without.group_separator = "";
  without.decimal_separator = "";
  EXPECT_EQ(ParseNumber("1234", without), 1234);
  EXPECT_FALSE(ParseNumber("1,234", without).has_value());
}

TEST(Round, TakesHalvesToTheEvenNeighbour) {
  const struct {
    double value;
    int rounded;
  } kRoundings[] = {{0.5, 0},
                    {1.5, 2},
                    {2.5, 2},
                    {3.5, 4},
                    {-0.5, 0},
                    {-1.5, -2},
                    {-2.5, -2},
                    {2.4, 2},
                    {2.6, 3},
                    {-2.6, -3},
                    {0.49999999999999994, 0},
                    {1234.5, 1234}};
  for (const auto& [value, rounded] : kRoundings) {
    EXPECT_EQ(RoundToInt16(value), rounded) << value;
    EXPECT_EQ(RoundToInt32(value), rounded) << value;
  }
}

TEST(Round, OverflowsBeyondItsType) {
  EXPECT_EQ(RoundToInt16(32767.4), 32767);
  EXPECT_EQ(RoundToInt16(-32768.5), -32768);
  EXPECT_EQ(RoundToInt32(2147483647.4), 2147483647);
  EXPECT_EQ(RoundToInt32(-2147483648.5), -2147483647 - 1);
  for (double value : {32767.5, -32768.6, 1e300, std::nan(""), -kInfinity}) {
    EXPECT_EQ(NumberOf([&] { RoundToInt16(value); }), 6) << value;
  }
  for (double value : {2147483647.5, -2147483648.6, 1e300, std::nan(""), kInfinity}) {
    EXPECT_EQ(NumberOf([&] { RoundToInt32(value); }), 6) << value;
  }
}

TEST(CheckedArithmetic, OverflowsInsteadOfWrapping) {
  EXPECT_EQ(AddChecked(2147483646, 1), 2147483647);
  EXPECT_EQ(NumberOf([] { AddChecked(2147483647, 1); }), 6);
  EXPECT_EQ(NumberOf([] { AddChecked(-2147483647, -2); }), 6);
  EXPECT_EQ(MultiplyChecked(2147483, 1000), 2147483000);
  EXPECT_EQ(NumberOf([] { MultiplyChecked(2147484, 1000); }), 6);
  EXPECT_EQ(MultiplyChecked(-65536, 32768), -2147483647 - 1);
  EXPECT_EQ(NumberOf([] { MultiplyChecked(65536, 32768); }), 6);
}

}  // namespace
}  // namespace mirelo
