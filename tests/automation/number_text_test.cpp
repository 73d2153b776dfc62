#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "automation/number.h"

namespace mirelo {
namespace {

struct Printing {
  double value;
  const char* text;
};
constexpr Printing kPrintings[] = {
    {0, "0"},
    {-0.0, "0"},
    {1, "1"},
    {-1, "-1"},
    {25.1, "25.1"},
    {0.5, "0.5"},
    {-0.5, "-0.5"},
    {100, "100"},
    {0.1 + 0.2, "0.3"},
    {1.0 / 3, "0.333333333333333"},
    {2.0 / 3, "0.666666666666667"},
    {100.0 / 3, "33.3333333333333"},
    {1.0 / 24, "4.16666666666667E-02"},
    {1.0 / 30, "3.33333333333333E-02"},
    {0.05, "0.05"},
    {0.001, "0.001"},
    {0.0001, "0.0001"},
    {0.00012345, "0.00012345"},
    {0.00001, "1E-05"},
    {0.000012345, "1.2345E-05"},
    {123456789, "123456789"},
    {40563.358484, "40563.358484"},
    {999999999999999, "999999999999999"},
    {999999999999999.9, "1E+15"},
    {123456789012345, "123456789012345"},
    {1e15, "1E+15"},
    {1.5e20, "1.5E+20"},
    {-1.5e20, "-1.5E+20"},
    {1e100, "1E+100"},
    {1e-100, "1E-100"},
    {1.7976931348623157e308, "1.79769313486232E+308"},
};

TEST(NumberText, PrintsUpTo15SignificantDigits) {
  for (const Printing& printing : kPrintings) EXPECT_EQ(NumberText(printing.value), printing.text);
}

TEST(NumberText, NamesWhatIsNoFiniteNumber) {
  EXPECT_EQ(NumberText(std::numeric_limits<double>::infinity()), "1.#INF");
  EXPECT_EQ(NumberText(-std::numeric_limits<double>::infinity()), "-1.#INF");
  EXPECT_EQ(NumberText(std::nan("")), "1.#QNAN");
}

TEST(NumberText, PrintsIntegers) {
  EXPECT_EQ(NumberText(std::int32_t{0}), "0");
  EXPECT_EQ(NumberText(std::numeric_limits<std::int32_t>::min()), "-2147483648");
}

}  // namespace
}  // namespace mirelo
