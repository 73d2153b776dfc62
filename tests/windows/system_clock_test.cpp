#include "adapters/windows/system.h"

#include "adapters/windows/system_clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>

namespace mirelo::testing {
namespace {

constexpr double kSecondsPerDay = 86'400;

Date DateOf(const SYSTEMTIME& time) {
  return ToDate({time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond});
}

// These tests run in a zone that is some hours behind universal time.
TEST(WindowsClock, TellsTheLocalTime) {
  SYSTEMTIME universal{};
  SYSTEMTIME local{};
  ::GetSystemTime(&universal);
  ASSERT_TRUE(::SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local));
  ASSERT_GT(DateOf(universal).serial - DateOf(local).serial, 3 / 24.0) << "there is nothing to be told apart";
  windows::SystemClock clock;
  EXPECT_NEAR(clock.Now().serial, DateOf(local).serial, 3 / kSecondsPerDay);
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
