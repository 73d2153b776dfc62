#include "day/pulse.h"

#include <gtest/gtest.h>

namespace mirelo::day {
namespace {

using namespace std::chrono_literals;

const Pulse::Clock::time_point kBegin{1000h};

TEST(Pulse, CountsAndSaysHowOldTheLastOneIs) {
  Pulse pulse(kBegin);
  EXPECT_EQ(pulse.Text(kBegin + 1s), "0 quotes");
  pulse.Beat(1, kBegin + 1s);
  EXPECT_EQ(pulse.Text(kBegin + 1200ms), "1 quote, 0.8 a second, the last 0.2 s ago");
  pulse.Beat(4, kBegin + 2s);
  EXPECT_EQ(pulse.Text(kBegin + 5min), "5 quotes, 0 a second, the last 4 min ago");
}

TEST(Pulse, HasTheRateOfTheLastTenSecondsHoweverOftenItIsAsked) {
  Pulse pulse(kBegin);
  for (int second = 0; second < 60; ++second) pulse.Beat(20, kBegin + 1s * second + 1ms);
  for (int look = 0; look < 3; ++look) EXPECT_NEAR(pulse.Rate(kBegin + 59s + 900ms), 20, 0.5);
  for (int i = 0; i < 500; ++i) pulse.Beat(1, kBegin + 60s + 500ms);
  EXPECT_NEAR(pulse.Rate(kBegin + 60s + 999ms), 63, 1) << "700 in eleven seconds";
  EXPECT_NEAR(pulse.Rate(kBegin + 71s), 0, 0.01);
}

TEST(Pulse, HasTheRateSinceItsBeginningWhileThatIsLess) {
  Pulse pulse(kBegin);
  pulse.Beat(30, kBegin + 100ms);
  EXPECT_EQ(pulse.Rate(kBegin + 200ms), 30) << "of a second at least";
  EXPECT_EQ(pulse.Rate(kBegin + 3s), 10);
}

}  // namespace
}  // namespace mirelo::day
