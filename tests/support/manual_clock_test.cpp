#include "support/manual_clock.h"

#include <gtest/gtest.h>

namespace mirelo::testing {
namespace {

TEST(ManualClock, StandsStill) {
  ManualClock clock;
  EXPECT_EQ(clock.Now(), ToDate({2011, 1, 20, 8, 36, 13}));
  EXPECT_EQ(clock.Now(), clock.Now());
  EXPECT_EQ(clock.SecondsSinceMidnight(), 30973);
}

TEST(ManualClock, ShowsFractionsInSecondsSinceMidnightOnly) {
  ManualClock clock;
  const std::int64_t second = clock.Second();
  clock.Advance(0.75);
  EXPECT_EQ(clock.Now(), ToDate({2011, 1, 20, 8, 36, 13}));
  EXPECT_EQ(clock.Second(), second);
  EXPECT_EQ(clock.SecondsSinceMidnight(), 30973.75);
  clock.Advance(0.25);
  EXPECT_EQ(clock.Now(), ToDate({2011, 1, 20, 8, 36, 14}));
  EXPECT_EQ(clock.Second(), second + 1);
}

TEST(ManualClock, PassesMidnightBothWays) {
  ManualClock clock({2011, 12, 31, 23, 59, 59});
  clock.Advance(2);
  EXPECT_EQ(clock.Now(), ToDate({2012, 1, 1, 0, 0, 1}));
  EXPECT_EQ(clock.SecondsSinceMidnight(), 1);
  clock.Advance(-2);
  EXPECT_EQ(clock.Now(), ToDate({2011, 12, 31, 23, 59, 59}));
  clock.Advance(3 * 86'400);
  EXPECT_EQ(clock.Now(), ToDate({2012, 1, 3, 23, 59, 59}));
}

}  // namespace
}  // namespace mirelo::testing
