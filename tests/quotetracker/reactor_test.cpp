#include "quotetracker/reactor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <thread>
#include <vector>

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

Reactor::Time Now() { return std::chrono::steady_clock::now(); }

struct SocketPair {
  SocketPair() {
    std::array<int, 2> sockets{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, sockets.data()), 0);
    one = FileDescriptor(sockets[0]);
    two = FileDescriptor(sockets[1]);
  }
  FileDescriptor one;
  FileDescriptor two;
};

TEST(Reactor, FiresTimersInTheOrderOfTheirTimes) {
  Reactor reactor;
  std::vector<int> fired;
  const auto now = Now();
  reactor.StartTimer(now + 2ms, [&] { fired.push_back(2); });
  reactor.StartTimer(now + 1ms, [&] { fired.push_back(1); });
  reactor.StartTimer(now + 3ms, [&] {
    fired.push_back(3);
    reactor.Stop();
  });
  reactor.Run();
  EXPECT_THAT(fired, ElementsAre(1, 2, 3));
}

TEST(Reactor, FiresNoTimerBeforeItsTime) {
  Reactor reactor;
  const auto due = Now() + 2500us;
  reactor.StartTimer(due, [&] { reactor.Stop(); });
  reactor.Run();
  EXPECT_GE(Now(), due);
}

TEST(Reactor, FiresNoStoppedTimer) {
  Reactor reactor;
  bool fired = false;
  const auto timer = reactor.StartTimer(Now(), [&] { fired = true; });
  reactor.StopTimer(timer);
  reactor.StopTimer(timer);
  reactor.StartTimer(Now() + 1ms, [&] { reactor.Stop(); });
  reactor.Run();
  EXPECT_FALSE(fired);
}

TEST(Reactor, LetsDescriptorsInBetweenTimersThatStartOthers) {
  Reactor reactor;
  SocketPair pair;
  reactor.Watch(pair.one.get(), Reactor::kWrite, [&](unsigned) { reactor.Stop(); });
  std::function<void()> again = [&] { reactor.StartTimer(Reactor::Time{}, again); };
  again();
  reactor.Run();
}

TEST(Reactor, SaysWhatADescriptorIsReadyFor) {
  Reactor reactor;
  SocketPair pair;
  std::vector<unsigned> ready;
  Reactor::Token watch = 0;
  watch = reactor.Watch(pair.one.get(), Reactor::kWrite, [&](unsigned now) {
    ready.push_back(now);
    if (ready.size() == 1) {
      EXPECT_EQ(::write(pair.two.get(), "x", 1), 1);
      return reactor.Rewatch(watch, Reactor::kRead);
    }
    reactor.Unwatch(watch);
    reactor.Stop();
  });
  reactor.Run();
  EXPECT_THAT(ready, ElementsAre(unsigned{Reactor::kWrite}, unsigned{Reactor::kRead}));
}

TEST(Reactor, CallsNoHandlerWhoseWatchAnotherHasEnded) {
  Reactor reactor;
  SocketPair pair;
  Reactor::Token one = 0;
  Reactor::Token two = 0;
  int calls = 0;
  one = reactor.Watch(pair.one.get(), Reactor::kWrite, [&](unsigned) {
    ++calls;
    reactor.Unwatch(two);
    reactor.Unwatch(one);
  });
  two = reactor.Watch(pair.two.get(), Reactor::kWrite, [&](unsigned) {
    ++calls;
    reactor.Unwatch(one);
    reactor.Unwatch(two);
  });
  reactor.StartTimer(Now() + 2ms, [&] { reactor.Stop(); });
  reactor.Run();
  EXPECT_EQ(calls, 1);
}

TEST(Reactor, DoesWorkOfOtherThreadsInTheirOrder) {
  Reactor reactor;
  std::vector<int> done;
  std::thread other([&] {
    for (int i = 0; i < 3; ++i) reactor.Post([&done, i] { done.push_back(i); });
    reactor.Stop();
  });
  reactor.Run();
  other.join();
  EXPECT_THAT(done, ElementsAre(0, 1, 2));
}

TEST(Reactor, DoesWorkThatHandsOverMoreWork) {
  Reactor reactor;
  reactor.Post([&] { reactor.Post([&] { reactor.Stop(); }); });
  reactor.Run();
}

}  // namespace
}  // namespace mirelo::quotetracker
