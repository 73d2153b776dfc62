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
template <class Loop>
class Timers : public ::testing::Test {
 protected:
  auto Note(std::string word) {
    return [this, word = std::move(word)] { log_.push_back(word); };
  }
  void At(milliseconds time) {
    now_ = typename Loop::Time(time);
    loop_.Yield();
  }

  typename Loop::Time now_{};
  Loop loop_{[this] { return now_; }};
  Words log_;
};
TYPED_TEST_SUITE(Timers, TestedLoops, LoopNames);

template <class Loop>
using RealTimers = LoopTest<Loop>;
TYPED_TEST_SUITE(RealTimers, TestedLoops, LoopNames);

TYPED_TEST(Timers, FireOnceWhenTheirDelayHasPassed) {
  this->loop_.StartTimer(milliseconds(100), this->Note("fired"));
  this->At(milliseconds(99));
  EXPECT_EQ(this->log_, Words{});
  this->At(milliseconds(100));
  EXPECT_EQ(this->log_, Words{"fired"});
  this->At(milliseconds(1000));
  EXPECT_EQ(this->log_, Words{"fired"});
}

TYPED_TEST(Timers, FireInTheOrderOfTheirDueTimesThenOfTheirStart) {
  this->loop_.StartTimer(milliseconds(30), this->Note("30"));
  this->loop_.StartTimer(milliseconds(10), this->Note("10"));
  this->loop_.StartTimer(milliseconds(20), this->Note("20 first"));
  this->loop_.StartTimer(milliseconds(20), this->Note("20 second"));
  this->At(milliseconds(50));
  EXPECT_EQ(this->log_, (Words{"10", "20 first", "20 second", "30"}));
}

TYPED_TEST(Timers, StartedInAHandlerWaitForTheNextStepEvenWithoutDelay) {
  this->loop_.StartTimer(milliseconds(0), [this] {
    this->log_.push_back("outer");
    this->loop_.StartTimer(milliseconds(0), this->Note("inner"));
  });
  this->loop_.Yield();
  EXPECT_EQ(this->log_, Words{"outer"});
  this->loop_.Yield();
  EXPECT_EQ(this->log_, (Words{"outer", "inner"}));
}

TYPED_TEST(Timers, StartedInAHandlerWaitForTheNextStepEvenWhenTimeHasMovedOn) {
  this->loop_.StartTimer(milliseconds(0), [this] {
    this->loop_.StartTimer(milliseconds(5), this->Note("inner"));
    this->now_ += milliseconds(10);
  });
  this->loop_.Yield();
  EXPECT_EQ(this->log_, Words{});
  this->loop_.Yield();
  EXPECT_EQ(this->log_, Words{"inner"});
}

TYPED_TEST(Timers, StoppedDoNotFire) {
  const auto timer = this->loop_.StartTimer(milliseconds(1), this->Note("stopped"));
  this->loop_.StopTimer(timer);
  this->loop_.StopTimer(timer);
  this->At(milliseconds(5));
  EXPECT_EQ(this->log_, Words{});
  EXPECT_FALSE(this->loop_.NextTimer().has_value());
}

TYPED_TEST(Timers, StoppedByAnEarlierTimerOfTheSameStepDoNotFire) {
  MessageLoop::Token second = 0;
  this->loop_.StartTimer(milliseconds(1), [&] { this->loop_.StopTimer(second); });
  second = this->loop_.StartTimer(milliseconds(1), this->Note("second"));
  this->At(milliseconds(1));
  EXPECT_EQ(this->log_, Words{});
}

TYPED_TEST(Timers, MayStopThemselvesAndLiveUntilTheyReturn) {
  auto owned = std::make_shared<std::string>("alive");
  const std::weak_ptr<std::string> life = owned;
  MessageLoop::Token timer = 0;
  timer = this->loop_.StartTimer(milliseconds(0), [this, &timer, owned = std::move(owned)] {
    this->loop_.StopTimer(timer);
    this->loop_.Yield();
    this->log_.push_back(*owned);
  });
  this->loop_.Yield();
  EXPECT_EQ(this->log_, Words{"alive"});
  EXPECT_TRUE(life.expired());
}

TYPED_TEST(Timers, ThatThrowAreGoneAndTheOthersFireLater) {
  this->loop_.StartTimer(milliseconds(0), [] { throw std::runtime_error("bad timer"); });
  this->loop_.StartTimer(milliseconds(0), this->Note("other"));
  EXPECT_THROW(this->loop_.Yield(), std::runtime_error);
  EXPECT_EQ(this->log_, Words{});
  this->loop_.Yield();
  EXPECT_EQ(this->log_, Words{"other"});
}

TYPED_TEST(Timers, WithoutDelayStarveNeitherDescriptorsNorOtherTimers) {
  SocketPair pair;
  int rounds = 0;
  std::function<void()> again = [&] {
    ++rounds;
    this->loop_.StartTimer(milliseconds(0), again);
  };
  again();
  this->loop_.StartTimer(milliseconds(1), this->Note("other"));
  this->loop_.Watch(pair.near, MessageLoop::kRead, [&](unsigned) { this->log_.push_back(pair.Read()); });
  pair.Write("bytes");
  this->loop_.Yield();
  EXPECT_EQ(this->log_, Words{"bytes"});
  this->At(milliseconds(1));
  EXPECT_EQ(this->log_, (Words{"bytes", "other"}));
  EXPECT_EQ(rounds, 3);
}

TYPED_TEST(Timers, OfAnyDelayAreTaken) {
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
    this->log_.clear();
    const auto timer = this->loop_.StartTimer(c.delay, this->Note("fired"));
    this->loop_.Yield();
    EXPECT_EQ(!this->log_.empty(), c.due_at_once);
    this->loop_.StopTimer(timer);
  }
}

TYPED_TEST(Timers, ByTheThousandFireInOrder) {
  std::vector<int> fired;
  std::vector<MessageLoop::Token> tokens;
  for (int i = 0; i < 5000; ++i) {
    const int delay = (i * 7919) % 5000;  // each of 0 to 4999 once
    tokens.push_back(
        this->loop_.StartTimer(milliseconds(delay), [&fired, delay] { fired.push_back(delay); }));
  }
  std::vector<int> expected(5000);
  std::iota(expected.begin(), expected.end(), 0);
  for (int i = 0; i < 5000; i += 2) {
    this->loop_.StopTimer(tokens[static_cast<std::size_t>(i)]);
    std::erase(expected, (i * 7919) % 5000);
  }
  this->At(milliseconds(5000));
  EXPECT_EQ(fired, expected);
}

TYPED_TEST(Timers, TellWhenTheFirstFallsDue) {
  EXPECT_FALSE(this->loop_.NextTimer().has_value());
  this->loop_.StartTimer(milliseconds(20), this->Note("20"));
  const auto first = this->loop_.StartTimer(milliseconds(10), this->Note("10"));
  EXPECT_EQ(this->loop_.NextTimer(), typename TypeParam::Time(milliseconds(10)));
  this->loop_.StopTimer(first);
  EXPECT_EQ(this->loop_.NextTimer(), typename TypeParam::Time(milliseconds(20)));
}

TYPED_TEST(RealTimers, EndAWaitOfRunUntilNotBeforeTheyAreDue) {
  TypeParam loop;
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
