#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "loop/tested_loops.h"
#include "support/socket_pair.h"

namespace mirelo {
namespace {

using host::MessageLoop;
using testing::SocketPair;

constexpr unsigned kReadable = MessageLoop::kRead;
constexpr unsigned kWritable = MessageLoop::kWrite;

using Watch = LoopTest;
INSTANTIATE_WITH_EVERY_LOOP(Watch);
using Tokens = LoopTest;
INSTANTIATE_WITH_EVERY_LOOP(Tokens);
using Handlers = LoopTest;
INSTANTIATE_WITH_EVERY_LOOP(Handlers);
using RunUntil = LoopTest;
INSTANTIATE_WITH_EVERY_LOOP(RunUntil);

TEST_P(Watch, HandsAReadyDescriptorToItsHandlerOnceAStep) {
  AnyLoop loop(GetParam());
  SocketPair pair;
  int calls = 0;
  loop.Watch(pair.near, kReadable, [&](unsigned ready) {
    EXPECT_EQ(ready, kReadable);
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

TEST_P(Watch, TellsOnlyWhatWasAskedFor) {
  struct Case {
    const char* name;
    unsigned interest;
    bool bytes_wait;
    unsigned ready;  // 0: not called
  };
  const Case cases[] = {
      {"reading, nothing there", kReadable, false, 0},
      {"reading", kReadable, true, kReadable},
      {"writing", kWritable, true, kWritable},
      {"both, nothing there", kReadable | kWritable, false, kWritable},
      {"both", kReadable | kWritable, true, kReadable | kWritable},
      {"neither", 0, true, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    AnyLoop loop(GetParam());
    SocketPair pair;
    unsigned seen = 0;
    loop.Watch(pair.near, c.interest, [&](unsigned ready) { seen = ready; });
    if (c.bytes_wait) pair.Write("x");
    loop.Yield();
    EXPECT_EQ(seen, c.ready);
  }
}

TEST_P(Watch, CountsAHangUpAsWhateverWasAskedFor) {
  for (const unsigned interest : {kReadable, kWritable, kReadable | kWritable}) {
    SCOPED_TRACE(interest);
    AnyLoop loop(GetParam());
    SocketPair pair;
    unsigned seen = 0;
    loop.Watch(pair.near, interest, [&](unsigned ready) { seen = ready; });
    pair.CloseFar();
    loop.Yield();
    EXPECT_EQ(seen, interest);
  }
}

TEST_P(Watch, WithoutInterestIsNotCalledForAHangUpEither) {
  AnyLoop loop(GetParam());
  SocketPair pair;
  int calls = 0;
  const auto token = loop.Watch(pair.near, 0, [&](unsigned) { ++calls; });
  pair.CloseFar();
  loop.Yield();
  EXPECT_EQ(calls, 0);
  loop.Rewatch(token, kReadable);
  loop.Yield();
  EXPECT_EQ(calls, 1);
}

TEST_P(Watch, FollowsRewatchWithinTheSameStep) {
  AnyLoop loop(GetParam());
  SocketPair a, b;
  std::vector<std::string> calls;
  MessageLoop::Token token_b = 0;
  loop.Watch(a.near, kReadable, [&](unsigned) {
    calls.push_back("a");
    loop.Rewatch(token_b, 0);
  });
  token_b = loop.Watch(b.near, kReadable, [&](unsigned) { calls.push_back("b"); });
  a.Write("x");
  b.Write("x");
  loop.Yield();
  EXPECT_EQ(calls, std::vector<std::string>{"a"});
}

TEST_P(Watch, EndedByAnotherHandlerOfTheSameStepIsNotCalled) {
  AnyLoop loop(GetParam());
  SocketPair a, b;
  MessageLoop::Token token_a = 0, token_b = 0;
  std::vector<std::string> calls;
  token_a = loop.Watch(a.near, kReadable, [&](unsigned) {
    calls.push_back("one");
    loop.Unwatch(token_b);
  });
  token_b = loop.Watch(b.near, kReadable, [&](unsigned) {
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

TEST_P(Watch, AddedByAHandlerIsFirstCalledInTheNextStep) {
  AnyLoop loop(GetParam());
  SocketPair a, b;
  int calls = 0;
  MessageLoop::Token token_a = 0;
  token_a = loop.Watch(a.near, kReadable, [&](unsigned) {
    loop.Unwatch(token_a);
    loop.Watch(b.near, kReadable, [&](unsigned) { ++calls; });
  });
  a.Write("x");
  b.Write("x");
  loop.Yield();
  EXPECT_EQ(calls, 0);
  loop.Yield();
  EXPECT_EQ(calls, 1);
}

TEST_P(Watch, MayBeEndedByItsOwnHandlerWhichLivesUntilItReturns) {
  AnyLoop loop(GetParam());
  SocketPair pair;
  auto owned = std::make_shared<std::string>("alive");
  const std::weak_ptr<std::string> life = owned;
  MessageLoop::Token token = 0;
  std::string seen;
  token = loop.Watch(pair.near, kReadable, [&loop, &token, &seen, owned = std::move(owned)](unsigned) {
    loop.Unwatch(token);
    seen = *owned;
  });
  pair.Write("x");
  loop.Yield();
  EXPECT_EQ(seen, "alive");
  EXPECT_TRUE(life.expired());
  loop.Yield();
}

TEST_P(Watch, OfADescriptorClosedUnderneathIsDroppedInsteadOfSpunOn) {
  AnyLoop loop(GetParam());
  SocketPair pair;
  int calls = 0;
  loop.Watch(pair.near, kReadable, [&](unsigned) { ++calls; });
  pair.CloseNear();
  loop.Yield();
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(loop.WatchCount(), 0u);
}

TEST_P(Watch, OfANumberThatCameBackTakesThePlaceOfTheFormer) {
  AnyLoop loop(GetParam());
  SocketPair pair;
  std::vector<std::string> calls;
  const auto former = loop.Watch(pair.near, kReadable, [&](unsigned) { calls.push_back("former"); });
  loop.Watch(pair.near, kReadable, [&](unsigned) { calls.push_back("new"); });
  pair.Write("x");
  loop.Yield();
  loop.Unwatch(former);  // unknown by now
  loop.Yield();
  EXPECT_EQ(calls, (std::vector<std::string>{"new", "new"}));
}

TEST_P(Watch, IgnoresUnknownTokens) {
  AnyLoop loop(GetParam());
  loop.Unwatch(0);
  loop.Unwatch(12345);
  loop.Rewatch(12345, kReadable);
  loop.StopTimer(12345);
  loop.Yield();
  EXPECT_EQ(loop.WatchCount(), 0u);
}

TEST_P(Tokens, AreNeverZeroNorUsedTwiceWhetherWatchOrTimer) {
  AnyLoop loop(GetParam());
  SocketPair pair;
  std::set<MessageLoop::Token> seen;
  for (int i = 0; i < 100; ++i) {
    const auto watch = loop.Watch(pair.near, kReadable, [](unsigned) {});
    const auto timer = loop.StartTimer(MessageLoop::Milliseconds(0), [] {});
    EXPECT_TRUE(seen.insert(watch).second);
    EXPECT_TRUE(seen.insert(timer).second);
    loop.Unwatch(watch);
    loop.StopTimer(timer);
  }
  EXPECT_EQ(seen.count(0), 0u);
}

TEST_P(Watch, OfHundredsOfDescriptorsReachesEachOne) {
  AnyLoop loop(GetParam());
  std::vector<std::unique_ptr<SocketPair>> pairs;
  std::vector<MessageLoop::Token> tokens;
  std::set<int> called;
  for (int i = 0; i < 300; ++i) {
    pairs.push_back(std::make_unique<SocketPair>());
    tokens.push_back(loop.Watch(pairs.back()->near, kReadable, [&called, i](unsigned) { called.insert(i); }));
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

TEST_P(Handlers, MayThrowAndTheLoopGoesOn) {
  AnyLoop loop(GetParam());
  SocketPair a, b;
  int good_calls = 0;
  loop.Watch(a.near, kReadable, [&](unsigned) {
    a.Read();
    throw std::runtime_error("bad bytes");
  });
  loop.Watch(b.near, kReadable, [&](unsigned) {
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
  explicit Ending(MessageLoop& of, MessageLoop::Token watch = 0) : loop(of), other(watch) {}
  ~Ending() { loop.Unwatch(other); }
  MessageLoop& loop;
  MessageLoop::Token other;
};

TEST_P(Handlers, MayEndOtherWatchesWhenTheyAreDestroyed) {
  AnyLoop loop(GetParam());
  SocketPair a, b, c;
  const auto hold = [&](MessageLoop::Token other) { return std::make_shared<Ending>(loop, other); };
  const auto watch_a = loop.Watch(a.near, kReadable, [](unsigned) {});
  const auto watch_b = loop.Watch(b.near, kReadable, [end = hold(watch_a)](unsigned) {});
  const auto watch_c = loop.Watch(c.near, kReadable, [end = hold(watch_b)](unsigned) {});
  EXPECT_EQ(loop.WatchCount(), 3u);
  loop.Unwatch(watch_c);
  EXPECT_EQ(loop.WatchCount(), 0u);
}

TEST_P(Handlers, MayEndOtherWatchesWhenTheLoopIsDestroyed) {
  SocketPair pairs[8];
  std::vector<std::shared_ptr<Ending>> endings;
  AnyLoop loop(GetParam());
  std::generate_n(std::back_inserter(endings), 8, [&] { return std::make_shared<Ending>(loop); });
  for (std::size_t i = 0; i < 8; ++i) {
    endings[(i + 3) % 8]->other = loop.Watch(pairs[i].near, kReadable, [end = endings[i]](unsigned) {});
  }
  loop.StartTimer(MessageLoop::Milliseconds(1000), [end = endings[0]] {});
  endings.clear();
  EXPECT_EQ(loop.WatchCount(), 8u);
}

TEST_P(RunUntil, ReturnsAtOnceWhenDoneAlready) {
  AnyLoop loop(GetParam());
  SocketPair pair;
  int calls = 0;
  loop.Watch(pair.near, kReadable, [&](unsigned) { ++calls; });
  pair.Write("x");
  loop.RunUntil([] { return true; });
  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace mirelo
