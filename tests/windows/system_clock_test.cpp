#include "adapters/windows/system_clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>

namespace mirelo::testing {
namespace {

constexpr double kSecondsPerDay = 86'400;

TEST(WindowsClock, TellsTheLocalTime) {
  windows::SystemClock clock;
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);
  const Date expected = ToDate(
      {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
  EXPECT_NEAR(clock.Now().serial, expected.serial, 3 / kSecondsPerDay);
}

TEST(WindowsClock, TellsTheSecondsOfTheDay) {
  windows::SystemClock clock;
  const double of_day = std::fmod(clock.Now().serial, 1.0) * kSecondsPerDay;
  EXPECT_NEAR(std::fmod(clock.SecondsSinceMidnight() - of_day + kSecondsPerDay, kSecondsPerDay), 1.0, 2.0);
}

TEST(WindowsClock, CountsSeconds) {
  windows::SystemClock clock;
  constexpr std::int64_t kFrom1601To1970 = 11'644'473'600;
  EXPECT_NEAR(static_cast<double>(clock.Second() - kFrom1601To1970), static_cast<double>(std::time(nullptr)),
              2);
}

}  // namespace
}  // namespace mirelo::testing
