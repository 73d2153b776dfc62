#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <vector>

#include "adapters/poll/poll_loop.h"

namespace mirelo::poll {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

using Clock = std::chrono::steady_clock;

// How long a timer takes that is due in `delay`.
Clock::duration TimeOf(Clock::duration delay) {
  PollLoop loop;
  bool fired = false;
  const auto start = Clock::now();
  loop.StartTimerAt(start + delay, [&] { fired = true; });
  loop.RunUntil([&] { return fired; });
  return Clock::now() - start;
}

TEST(ExactTimers, FireInTheOrderOfTheirTimes) {
  PollLoop loop;
  std::vector<int> fired;
  const auto now = Clock::now();
  loop.StartTimerAt(now + 2ms, [&] { fired.push_back(2); });
  loop.StartTimerAt(now + 1ms, [&] { fired.push_back(1); });
  loop.StartTimerAt(now + 3ms, [&] { fired.push_back(3); });
  loop.RunUntil([&] { return fired.size() == 3; });
  EXPECT_THAT(fired, ElementsAre(1, 2, 3));
}

TEST(ExactTimers, FireNotBeforeTheirTime) { EXPECT_GE(TimeOf(2500us), 2500us); }

TEST(ExactTimers, AreNotRoundedToMilliseconds) {
  // A busy machine may be late at any of them, but not at all.
  auto shortest = Clock::duration::max();
  for (int i = 0; i < 100; ++i) shortest = std::min(shortest, TimeOf(200us));
  EXPECT_LT(shortest, 1ms);
}

TEST(ExactTimers, OfAMomentThatIsPastFireInTheNextStep) {
  PollLoop loop;
  int fired = 0;
  loop.StartTimerAt(Clock::time_point(), [&] { ++fired; });
  loop.Yield();
  EXPECT_EQ(fired, 1);
}

}  // namespace
}  // namespace mirelo::poll
