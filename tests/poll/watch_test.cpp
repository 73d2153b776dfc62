#include <gtest/gtest.h>
#include <signal.h>
#include <sys/time.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "poll/socket_pair.h"

namespace mirelo::poll {
namespace {

constexpr unsigned kRead = PollLoop::kRead;
constexpr unsigned kWrite = PollLoop::kWrite;

TEST(Watch, HandsAReadyDescriptorToItsHandlerOnceAStep) {
  PollLoop loop;
  SocketPair pair;
  int calls = 0;
  loop.Watch(pair.near, kRead, [&](unsigned ready) {
    EXPECT_EQ(ready, kRead);
    ++calls;
  });
  loop.Yield();
  EXPECT_EQ(calls, 0);
  pair.Write("x");
  loop.Yield();
  EXPECT_EQ(calls, 1);
  loop.Yield();  // nobody has read the byte
  EXPECT_EQ(calls, 2);
}

TEST(Watch, TellsOnlyWhatWasAskedFor) {
  struct Case {
    const char* name;
    unsigned interest;
    bool bytes_wait;
    unsigned ready;  // 0: not called
  };
  const Case cases[] = {
      {"reading, nothing there", kRead, false, 0},
      {"reading", kRead, true, kRead},
      {"writing", kWrite, true, kWrite},
      {"both, nothing there", kRead | kWrite, false, kWrite},
      {"both", kRead | kWrite, true, kRead | kWrite},
      {"neither", 0, true, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    PollLoop loop;
    SocketPair pair;
    unsigned seen = 0;
    loop.Watch(pair.near, c.interest, [&](unsigned ready) { seen = ready; });
    if (c.bytes_wait) pair.Write("x");
    loop.Yield();
    EXPECT_EQ(seen, c.ready);
  }
}

TEST(Watch, CountsAHangUpAsWhateverWasAskedFor) {
  for (const unsigned interest : {kRead, kWrite, kRead | kWrite}) {
    SCOPED_TRACE(interest);
    PollLoop loop;
    SocketPair pair;
    unsigned seen = 0;
    loop.Watch(pair.near, interest, [&](unsigned ready) { seen = ready; });
    pair.CloseFar();
    loop.Yield();
    EXPECT_EQ(seen, interest);
  }
}

TEST(Watch, WithoutInterestIsNotCalledForAHangUpEither) {
  PollLoop loop;
  SocketPair pair;
  int calls = 0;
  const auto token = loop.Watch(pair.near, 0, [&](unsigned) { ++calls; });
  pair.CloseFar();
  loop.Yield();
  EXPECT_EQ(calls, 0);
  loop.Rewatch(token, kRead);
  loop.Yield();
  EXPECT_EQ(calls, 1);
}

TEST(Watch, FollowsRewatchWithinTheSameStep) {
  PollLoop loop;
  SocketPair a, b;
  std::vector<std::string> calls;
  PollLoop::Token token_b = 0;
  loop.Watch(a.near, kRead, [&](unsigned) {
    calls.push_back("a");
    loop.Rewatch(token_b, 0);
  });
  token_b = loop.Watch(b.near, kRead, [&](unsigned) { calls.push_back("b"); });
  a.Write("x");
  b.Write("x");
  loop.Yield();
  EXPECT_EQ(calls, std::vector<std::string>{"a"});
}

TEST(Watch, EndedByAnotherHandlerOfTheSameStepIsNotCalled) {
  PollLoop loop;
  SocketPair a, b;
  PollLoop::Token token_a = 0, token_b = 0;
  std::vector<std::string> calls;
  token_a = loop.Watch(a.near, kRead, [&](unsigned) {
    calls.push_back("one");
    loop.Unwatch(token_b);
  });
  token_b = loop.Watch(b.near, kRead, [&](unsigned) {
    calls.push_back("one");
    loop.Unwatch(token_a);
  });
  a.Write("x");
  b.Write("x");
  loop.Yield();
  loop.Yield();
  EXPECT_EQ(calls.size(), 2u) << "whichever came first is called in both steps, the other never";
  EXPECT_EQ(loop.WatchCount(), 1u);
}

TEST(Watch, AddedByAHandlerIsFirstCalledInTheNextStep) {
  PollLoop loop;
  SocketPair a, b;
  int calls = 0;
  PollLoop::Token token_a = 0;
  token_a = loop.Watch(a.near, kRead, [&](unsigned) {
    loop.Unwatch(token_a);
    loop.Watch(b.near, kRead, [&](unsigned) { ++calls; });
  });
  a.Write("x");
  b.Write("x");
  loop.Yield();
  EXPECT_EQ(calls, 0);
  loop.Yield();
  EXPECT_EQ(calls, 1);
}

TEST(Watch, MayBeEndedByItsOwnHandlerWhichLivesUntilItReturns) {
  PollLoop loop;
  SocketPair pair;
  auto owned = std::make_shared<std::string>("alive");
  const std::weak_ptr<std::string> life = owned;
  PollLoop::Token token = 0;
  std::string seen;
  token = loop.Watch(pair.near, kRead, [&loop, &token, &seen, owned = std::move(owned)](unsigned) {
    loop.Unwatch(token);
    seen = *owned;
  });
  pair.Write("x");
  loop.Yield();
  EXPECT_EQ(seen, "alive");
  EXPECT_TRUE(life.expired());
  loop.Yield();
}

TEST(Watch, OfADescriptorClosedUnderneathIsDroppedInsteadOfSpunOn) {
  PollLoop loop;
  SocketPair pair;
  int calls = 0;
  loop.Watch(pair.near, kRead, [&](unsigned) { ++calls; });
  pair.CloseNear();
  loop.Yield();
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(loop.WatchCount(), 0u);
}

TEST(Watch, OfANumberThatCameBackTakesThePlaceOfTheFormer) {
  PollLoop loop;
  SocketPair pair;
  std::vector<std::string> calls;
  const auto former = loop.Watch(pair.near, kRead, [&](unsigned) { calls.push_back("former"); });
  loop.Watch(pair.near, kRead, [&](unsigned) { calls.push_back("new"); });
  pair.Write("x");
  loop.Yield();
  loop.Unwatch(former);  // unknown by now
  loop.Yield();
  EXPECT_EQ(calls, (std::vector<std::string>{"new", "new"}));
}

TEST(Watch, IgnoresUnknownTokens) {
  PollLoop loop;
  loop.Unwatch(0);
  loop.Unwatch(12345);
  loop.Rewatch(12345, kRead);
  loop.StopTimer(12345);
  loop.Yield();
  EXPECT_EQ(loop.WatchCount(), 0u);
}

TEST(Tokens, AreNeverZeroNorUsedTwiceWhetherWatchOrTimer) {
  PollLoop loop;
  SocketPair pair;
  std::set<PollLoop::Token> seen;
  for (int i = 0; i < 100; ++i) {
    const auto watch = loop.Watch(pair.near, kRead, [](unsigned) {});
    const auto timer = loop.StartTimer(PollLoop::Milliseconds(0), [] {});
    EXPECT_TRUE(seen.insert(watch).second);
    EXPECT_TRUE(seen.insert(timer).second);
    loop.Unwatch(watch);
    loop.StopTimer(timer);
  }
  EXPECT_EQ(seen.count(0), 0u);
}

TEST(Watch, OfHundredsOfDescriptorsReachesEachOne) {
  PollLoop loop;
  std::vector<std::unique_ptr<SocketPair>> pairs;
  std::vector<PollLoop::Token> tokens;
  std::set<int> called;
  for (int i = 0; i < 300; ++i) {
    pairs.push_back(std::make_unique<SocketPair>());
    tokens.push_back(loop.Watch(pairs.back()->near, kRead, [&called, i](unsigned) { called.insert(i); }));
    pairs.back()->Write("x");
  }
  std::set<int> expected;
  for (int i = 0; i < 300; ++i) {
    if (i % 3 == 0) {
      loop.Unwatch(tokens[static_cast<std::size_t>(i)]);
    } else {
      expected.insert(i);
    }
  }
  loop.Yield();
  EXPECT_EQ(called, expected);
}

TEST(Handlers, MayThrowAndTheLoopGoesOn) {
  PollLoop loop;
  SocketPair a, b;
  int good_calls = 0;
  loop.Watch(a.near, kRead, [&](unsigned) {
    a.Read();
    throw std::runtime_error("bad bytes");
  });
  loop.Watch(b.near, kRead, [&](unsigned) {
    b.Read();
    ++good_calls;
  });
  a.Write("x");
  b.Write("x");
  EXPECT_THROW(loop.RunUntil([] { return false; }), std::runtime_error);
  loop.Yield();
  EXPECT_EQ(good_calls, 1);
  a.Write("x");
  EXPECT_THROW(loop.Yield(), std::runtime_error);
}

// Ends a watch of the loop when the last handler that holds it is destroyed.
struct Ending {
  explicit Ending(PollLoop& of, PollLoop::Token watch = 0) : loop(of), other(watch) {}
  ~Ending() { loop.Unwatch(other); }
  PollLoop& loop;
  PollLoop::Token other;
};

TEST(Handlers, MayEndOtherWatchesWhenTheyAreDestroyed) {
  PollLoop loop;
  SocketPair a, b, c;
  const auto hold = [&](PollLoop::Token other) { return std::make_shared<Ending>(loop, other); };
  const auto watch_a = loop.Watch(a.near, kRead, [](unsigned) {});
  const auto watch_b = loop.Watch(b.near, kRead, [end = hold(watch_a)](unsigned) {});
  const auto watch_c = loop.Watch(c.near, kRead, [end = hold(watch_b)](unsigned) {});
  EXPECT_EQ(loop.WatchCount(), 3u);
  loop.Unwatch(watch_c);
  EXPECT_EQ(loop.WatchCount(), 0u);
}

TEST(Handlers, MayEndOtherWatchesWhenTheLoopIsDestroyed) {
  SocketPair pairs[8];
  std::vector<std::shared_ptr<Ending>> endings;
  PollLoop loop;
  std::generate_n(std::back_inserter(endings), 8, [&] { return std::make_shared<Ending>(loop); });
  for (std::size_t i = 0; i < 8; ++i) {
    endings[(i + 3) % 8]->other = loop.Watch(pairs[i].near, kRead, [end = endings[i]](unsigned) {});
  }
  loop.StartTimer(PollLoop::Milliseconds(1000), [end = endings[0]] {});
  endings.clear();
  EXPECT_EQ(loop.WatchCount(), 8u);
}

TEST(RunUntil, AsksAgainAfterASignal) {
  static volatile sig_atomic_t signalled;
  signalled = 0;
  struct sigaction action = {}, former = {};
  action.sa_handler = [](int) { signalled = 1; };
  ASSERT_EQ(::sigaction(SIGALRM, &action, &former), 0);
  PollLoop loop;
  // Repeated, since one signal could come between the question and the wait.
  const itimerval often = {{0, 2000}, {0, 2000}};
  const itimerval never = {};
  ::setitimer(ITIMER_REAL, &often, nullptr);
  loop.RunUntil([] { return signalled != 0; });
  ::setitimer(ITIMER_REAL, &never, nullptr);
  ::sigaction(SIGALRM, &former, nullptr);
  EXPECT_EQ(signalled, 1);
}

TEST(RunUntil, ReturnsAtOnceWhenDoneAlready) {
  PollLoop loop;
  SocketPair pair;
  int calls = 0;
  loop.Watch(pair.near, kRead, [&](unsigned) { ++calls; });
  pair.Write("x");
  loop.RunUntil([] { return true; });
  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace mirelo::poll
