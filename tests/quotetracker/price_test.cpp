#include "quotetracker/price.h"

#include <gtest/gtest.h>

#include <limits>

namespace mirelo::quotetracker {
namespace {

std::string Written(Price price) {
  char buffer[kPriceWidth];
  return {buffer, WritePrice(buffer, price)};
}

TEST(Price, IsWrittenWithTwoDecimalsAndMoreWhereTheySaySomething) {
  struct Case {
    Price price;
    const char* text;
  };
  for (const auto& [price, text] :
       {Case{0, "0.00"}, Case{265'000, "26.50"}, Case{-1'200, "-0.12"}, Case{12'345, "1.2345"},
        Case{12'340, "1.234"}, Case{12'300, "1.23"}, Case{100, "0.01"}, Case{1, "0.0001"},
        Case{-10'000, "-1.00"}, Case{9'999'999'999'999'900, "999999999999.99"}}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Written(price), text);
  }
}

TEST(Price, FitsItsWidthAtBothEndsOfItsRange) {
  EXPECT_EQ(Written(std::numeric_limits<Price>::max()), "922337203685477.5807");
  EXPECT_EQ(Written(std::numeric_limits<Price>::min()), "-922337203685477.5808");
}

TEST(Price, IsReadFromWhatItWrites) {
  for (const Price price : {0LL, 1LL, -1LL, 100LL, 12'345LL, -987'654'321LL, 9'999'999'999'999'999LL}) {
    EXPECT_EQ(ParsePrice(Written(price)), price);
  }
}

TEST(Price, IsReadFromWhatAPersonWrites) {
  struct Case {
    const char* text;
    Price price;
  };
  for (const auto& [text, price] :
       {Case{"26", 260'000}, Case{"26.", 260'000}, Case{".5", 5'000}, Case{"-.5", -5'000}, Case{"+1", 10'000},
        Case{"1.50000000", 15'000}, Case{"007", 70'000}}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ParsePrice(text), price);
  }
}

TEST(Price, IsNotReadFromOtherText) {
  for (const char* text :
       {"", ".", "-", "+", "1,5", "1.23456", "abc", "1e3", " 1", "1 ", "1.2.3", "--1", "1234567890123"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ParsePrice(text), std::nullopt);
  }
}

}  // namespace
}  // namespace mirelo::quotetracker
