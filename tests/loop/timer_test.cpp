#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include "loop/tested_loops.h"
#include "support/socket_pair.h"

namespace mirelo {
namespace {

using host::MessageLoop;
using testing::SocketPair;

using std::chrono::milliseconds;
using Words = std::vector<std::string>;

// A loop whose timers go by a clock that the test moves.
class Timers : public LoopTest {
 protected:
  auto Note(std::string word) {
    return [this, word = std::move(word)] { log_.push_back(word); };
  }
  void At(milliseconds time) {
    now_ = AnyLoop::Time(time);
    loop_.Yield();
  }

  AnyLoop::Time now_{};
  AnyLoop loop_{GetParam(), [this] { return now_; }};
  Words log_;
};
INSTANTIATE_WITH_EVERY_LOOP(Timers);

using RealTimers = LoopTest;
INSTANTIATE_WITH_EVERY_LOOP(RealTimers);

TEST_P(Timers, FireOnceWhenTheirDelayHasPassed) {
  loop_.StartTimer(milliseconds(100), Note("fired"));
  At(milliseconds(99));
  EXPECT_EQ(log_, Words{});
  At(milliseconds(100));
  EXPECT_EQ(log_, Words{"fired"});
  At(milliseconds(1000));
  EXPECT_EQ(log_, Words{"fired"});
}

TEST_P(Timers, FireInTheOrderOfTheirDueTimesThenOfTheirStart) {
  loop_.StartTimer(milliseconds(30), Note("30"));
  loop_.StartTimer(milliseconds(10), Note("10"));
  loop_.StartTimer(milliseconds(20), Note("20 first"));
  loop_.StartTimer(milliseconds(20), Note("20 second"));
  At(milliseconds(50));
  EXPECT_EQ(log_, (Words{"10", "20 first", "20 second", "30"}));
}

TEST_P(Timers, StartedInAHandlerWaitForTheNextStepEvenWithoutDelay) {
  loop_.StartTimer(milliseconds(0), [this] {
    log_.push_back("outer");
    loop_.StartTimer(milliseconds(0), Note("inner"));
  });
  loop_.Yield();
  EXPECT_EQ(log_, Words{"outer"});
  loop_.Yield();
  EXPECT_EQ(log_, (Words{"outer", "inner"}));
}

TEST_P(Timers, StartedInAHandlerWaitForTheNextStepEvenWhenTimeHasMovedOn) {
  loop_.StartTimer(milliseconds(0), [this] {
    loop_.StartTimer(milliseconds(5), Note("inner"));
    now_ += milliseconds(10);
  });
  loop_.Yield();
  EXPECT_EQ(log_, Words{});
  loop_.Yield();
  EXPECT_EQ(log_, Words{"inner"});
}

TEST_P(Timers, StoppedDoNotFire) {
  const auto timer = loop_.StartTimer(milliseconds(1), Note("stopped"));
  loop_.StopTimer(timer);
  loop_.StopTimer(timer);
  At(milliseconds(5));
  EXPECT_EQ(log_, Words{});
  EXPECT_FALSE(loop_.NextTimer().has_value());
}

TEST_P(Timers, StoppedByAnEarlierTimerOfTheSameStepDoNotFire) {
  MessageLoop::Token second = 0;
  loop_.StartTimer(milliseconds(1), [&] { loop_.StopTimer(second); });
  second = loop_.StartTimer(milliseconds(1), Note("second"));
  At(milliseconds(1));
  EXPECT_EQ(log_, Words{});
}

TEST_P(Timers, MayStopThemselvesAndLiveUntilTheyReturn) {
  auto owned = std::make_shared<std::string>("alive");
  const std::weak_ptr<std::string> life = owned;
  MessageLoop::Token timer = 0;
  timer = loop_.StartTimer(milliseconds(0), [this, &timer, owned = std::move(owned)] {
    loop_.StopTimer(timer);
    loop_.Yield();
    log_.push_back(*owned);
  });
  loop_.Yield();
  EXPECT_EQ(log_, Words{"alive"});
  EXPECT_TRUE(life.expired());
}

TEST_P(Timers, ThatThrowAreGoneAndTheOthersFireLater) {
  loop_.StartTimer(milliseconds(0), [] { throw std::runtime_error("bad timer"); });
  loop_.StartTimer(milliseconds(0), Note("other"));
  EXPECT_THROW(loop_.Yield(), std::runtime_error);
  EXPECT_EQ(log_, Words{});
  loop_.Yield();
  EXPECT_EQ(log_, Words{"other"});
}

TEST_P(Timers, WithoutDelayStarveNeitherDescriptorsNorOtherTimers) {
  SocketPair pair;
  int rounds = 0;
  std::function<void()> again = [&] {
    ++rounds;
    loop_.StartTimer(milliseconds(0), again);
  };
  again();
  loop_.StartTimer(milliseconds(1), Note("other"));
  loop_.Watch(pair.near, MessageLoop::kRead, [&](unsigned) { log_.push_back(pair.Read()); });
  pair.Write("bytes");
  loop_.Yield();
  EXPECT_EQ(log_, Words{"bytes"});
  At(milliseconds(1));
  EXPECT_EQ(log_, (Words{"bytes", "other"}));
  EXPECT_EQ(rounds, 3);
}

TEST_P(Timers, OfAnyDelayAreTaken) {
  struct Case {
    const char* name;
    milliseconds delay;
    bool due_at_once;
  };
  const Case cases[] = {
      {"negative", milliseconds(-5), true},
      {"none", milliseconds(0), true},
      {"one", milliseconds(1), false},
      {"longest", milliseconds::max(), false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    log_.clear();
    const auto timer = loop_.StartTimer(c.delay, Note("fired"));
    loop_.Yield();
    EXPECT_EQ(!log_.empty(), c.due_at_once);
    loop_.StopTimer(timer);
  }
}

TEST_P(Timers, ByTheThousandFireInOrder) {
  std::vector<int> fired;
  std::vector<MessageLoop::Token> tokens;
  for (int i = 0; i < 5000; ++i) {
    const int delay = (i * 7919) % 5000;  // each of 0 to 4999 once
    tokens.push_back(loop_.StartTimer(milliseconds(delay), [&fired, delay] { fired.push_back(delay); }));
  }
  std::vector<int> expected(5000);
  std::iota(expected.begin(), expected.end(), 0);
  for (int i = 0; i < 5000; i += 2) {
    loop_.StopTimer(tokens[static_cast<std::size_t>(i)]);
    std::erase(expected, (i * 7919) % 5000);
  }
  At(milliseconds(5000));
  EXPECT_EQ(fired, expected);
}

TEST_P(Timers, TellWhenTheFirstFallsDue) {
  EXPECT_FALSE(loop_.NextTimer().has_value());
  loop_.StartTimer(milliseconds(20), Note("20"));
  const auto first = loop_.StartTimer(milliseconds(10), Note("10"));
  EXPECT_EQ(loop_.NextTimer(), AnyLoop::Time(milliseconds(10)));
  loop_.StopTimer(first);
  EXPECT_EQ(loop_.NextTimer(), AnyLoop::Time(milliseconds(20)));
}

TEST_P(RealTimers, EndAWaitOfRunUntilNotBeforeTheyAreDue) {
  AnyLoop loop(GetParam());
  SocketPair hung_up;  // ready all the time, were it asked for
  loop.Watch(hung_up.near, 0, [](unsigned) {});
  hung_up.CloseFar();
  const auto start = std::chrono::steady_clock::now();
  bool fired = false;
  loop.StartTimer(milliseconds(15), [&] { fired = true; });
  int questions = 0;
  loop.RunUntil([&] {
    ++questions;
    return fired;
  });
  EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(15));
  EXPECT_LE(questions, 12) << "the loop waits instead of spinning";
}

}  // namespace
}  // namespace mirelo
