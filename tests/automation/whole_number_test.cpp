#include "automation/whole_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace mirelo {
namespace {

constexpr std::int64_t kMost = std::int64_t{1} << std::numeric_limits<double>::digits;

TEST(WholeNumber, IsOneUpToWhereADoubleHasAllOfThem) {
  for (const std::int64_t whole :
       {std::int64_t{0}, std::int64_t{-1}, std::int64_t{5'000'000'000}, kMost, -kMost})
    EXPECT_EQ(WholeNumber(static_cast<double>(whole)), whole);
  EXPECT_EQ(WholeNumber(-0.0), 0);
  for (const double end : {-1.0, 1.0}) {
    const double beyond = std::nextafter(end * static_cast<double>(kMost), end * INFINITY);
    EXPECT_EQ(WholeNumber(beyond), std::nullopt) << beyond;
  }
}

TEST(WholeNumber, IsNoneOfAnyOtherNumber) {
  for (const double number : {0.5, -28.35, 1e300, std::numeric_limits<double>::denorm_min(),
                              std::numeric_limits<double>::infinity(), std::nan("")})
    EXPECT_EQ(WholeNumber(number), std::nullopt) << number;
}

}  // namespace
}  // namespace mirelo
