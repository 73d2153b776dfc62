#include "adapters/headless/system_clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <thread>

namespace mirelo::headless {
namespace {

// Asks until nothing passed between the first and the last question.
template <class Ask>
void WithinOneSecond(SystemClock& clock, Ask&& ask) {
  std::int64_t second = 0;
  do {
    second = clock.Second();
    ask();
  } while (clock.Second() != second);
}

void ExpectLocalTime(SystemClock& clock) {
  Date now;
  std::tm local{};
  WithinOneSecond(clock, [&] {
    now = clock.Now();
    const std::time_t moment = static_cast<std::time_t>(clock.Second());
    localtime_r(&moment, &local);
  });
  EXPECT_EQ(ToCivil(now), (CivilTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                                     local.tm_min, local.tm_sec}));
}

TEST(SystemClock, GivesTheLocalTimeToTheSecond) {
  SystemClock clock;
  ExpectLocalTime(clock);
}

TEST(SystemClock, GivesTheNextSecondWhenThatHasCome) {
  SystemClock clock;
  ExpectLocalTime(clock);
  const std::int64_t second = clock.Second();
  while (clock.Second() == second) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  ExpectLocalTime(clock);
}

TEST(SystemClock, CountsSecondsSinceMidnightWithTheSameHands) {
  SystemClock clock;
  Date now;
  double seconds = 0;
  WithinOneSecond(clock, [&] {
    now = clock.Now();
    seconds = clock.SecondsSinceMidnight();
  });
  const CivilTime civil = ToCivil(now);
  EXPECT_EQ(std::floor(seconds), (civil.hour * 60 + civil.minute) * 60 + civil.second);
}

TEST(SystemClock, ShowsFractionsOfASecond) {
  SystemClock clock;
  const double first = clock.SecondsSinceMidnight();
  double second = first;
  while (second == first) second = clock.SecondsSinceMidnight();
  EXPECT_LT(std::fabs(second - first), 1.0);
}

}  // namespace
}  // namespace mirelo::headless
