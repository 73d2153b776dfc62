#include "quotetracker/server_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

TEST(ServerLoop, DoesWorkOfOtherThreadsInTheirOrder) {
  ServerLoop loop;
  std::vector<int> done;
  std::thread other([&] {
    for (int i = 0; i < 3; ++i) loop.Post([&done, i] { done.push_back(i); });
    loop.Stop();
  });
  loop.Run();
  other.join();
  EXPECT_THAT(done, ElementsAre(0, 1, 2));
}

TEST(ServerLoop, DoesWorkThatHandsOverMoreWork) {
  ServerLoop loop;
  loop.Post([&] { loop.Post([&] { loop.Stop(); }); });
  loop.Run();
}

TEST(ServerLoop, IsWokenByWorkWhileItWaits) {
  ServerLoop loop;
  bool running = false;
  std::thread other;
  loop.Events().StartTimer(0ms, [&] {
    running = true;
    other = std::thread([&] { loop.Post([&] { loop.Stop(); }); });
  });
  loop.Run();
  other.join();
  EXPECT_TRUE(running);
}

TEST(ServerLoop, EndsAtOnceWhenItWasStoppedBefore) {
  ServerLoop loop;
  bool done = false;
  loop.Post([&] { done = true; });
  loop.Stop();
  loop.Run();
  EXPECT_TRUE(done) << "work handed over before";
}

}  // namespace
}  // namespace mirelo::quotetracker
