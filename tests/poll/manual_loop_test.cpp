#include "support/manual_loop.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "support/socket_pair.h"

namespace mirelo::testing {
namespace {

using std::chrono::milliseconds;

TEST(ManualLoop, FiresTimersOnlyWhenTimeIsMoved) {
  ManualLoop loop;
  std::vector<milliseconds> fired;
  for (const int delay : {30, 10, 20}) {
    loop.StartTimer(milliseconds(delay), [&] { fired.push_back(loop.Elapsed()); });
  }
  loop.Yield();
  EXPECT_TRUE(fired.empty());
  loop.Advance(milliseconds(25));
  EXPECT_EQ(fired, (std::vector{milliseconds(10), milliseconds(20)})) << "each at its own time";
  EXPECT_EQ(loop.NextTimer(), milliseconds(5));
}

TEST(ManualLoop, FiresWhatFallsDueInConsequence) {
  ManualLoop loop;
  int beats = 0;
  std::function<void()> beat = [&] {
    ++beats;
    loop.StartTimer(milliseconds(100), beat);
  };
  loop.StartTimer(milliseconds(100), beat);
  loop.Advance(milliseconds(1000));
  EXPECT_EQ(beats, 10);
}

TEST(ManualLoop, ThrowsInsteadOfWaitingForEver) {
  ManualLoop loop;
  EXPECT_THROW(loop.RunUntil([] { return false; }), std::logic_error);
  loop.StartTimer(milliseconds(10), [] {});
  EXPECT_THROW(loop.RunUntil([] { return false; }), std::logic_error);
}

TEST(ManualLoop, SkipsWaitsWhenAllowed) {
  ManualLoop loop;
  loop.SkipWaits();
  bool done = false;
  loop.StartTimer(std::chrono::hours(8), [&] { done = true; });
  loop.RunUntil([&] { return done; });
  EXPECT_EQ(loop.Elapsed(), std::chrono::hours(8));
}

TEST(ManualLoop, HandlesDescriptorsWhileTimeStandsStill) {
  ManualLoop loop;
  SocketPair pair;
  bool timer = false;
  std::string bytes;
  loop.StartTimer(milliseconds(1), [&] { timer = true; });
  loop.Watch(pair.near, ManualLoop::kRead, [&](unsigned) { bytes = pair.Read(); });
  pair.Write("x");
  loop.RunUntil([&] { return !bytes.empty(); });
  EXPECT_EQ(bytes, "x");
  EXPECT_FALSE(timer);
}

}  // namespace
}  // namespace mirelo::testing
