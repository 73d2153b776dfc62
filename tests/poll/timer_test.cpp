#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "poll/socket_pair.h"

namespace mirelo::poll {
namespace {

using std::chrono::milliseconds;
using Words = std::vector<std::string>;

// A loop whose timers go by a clock that the test moves.
class Timers : public ::testing::Test {
 protected:
  auto Note(std::string word) {
    return [this, word = std::move(word)] { log_.push_back(word); };
  }
  void At(milliseconds time) {
    now_ = PollLoop::Time(time);
    loop_.Yield();
  }

  PollLoop::Time now_{};
  PollLoop loop_{[this] { return now_; }};
  Words log_;
};

TEST_F(Timers, FireOnceWhenTheirDelayHasPassed) {
  loop_.StartTimer(milliseconds(100), Note("fired"));
  At(milliseconds(99));
  EXPECT_EQ(log_, Words{});
  At(milliseconds(100));
  EXPECT_EQ(log_, Words{"fired"});
  At(milliseconds(1000));
  EXPECT_EQ(log_, Words{"fired"});
}

TEST_F(Timers, FireInTheOrderOfTheirDueTimesThenOfTheirStart) {
  loop_.StartTimer(milliseconds(30), Note("30"));
  loop_.StartTimer(milliseconds(10), Note("10"));
  loop_.StartTimer(milliseconds(20), Note("20 first"));
  loop_.StartTimer(milliseconds(20), Note("20 second"));
  At(milliseconds(50));
  EXPECT_EQ(log_, (Words{"10", "20 first", "20 second", "30"}));
}

TEST_F(Timers, StartedInAHandlerWaitForTheNextStepEvenWithoutDelay) {
  loop_.StartTimer(milliseconds(0), [this] {
    log_.push_back("outer");
    loop_.StartTimer(milliseconds(0), Note("inner"));
  });
  loop_.Yield();
  EXPECT_EQ(log_, Words{"outer"});
  loop_.Yield();
  EXPECT_EQ(log_, (Words{"outer", "inner"}));
}

TEST_F(Timers, StartedInAHandlerWaitForTheNextStepEvenWhenTimeHasMovedOn) {
  loop_.StartTimer(milliseconds(0), [this] {
    loop_.StartTimer(milliseconds(5), Note("inner"));
    now_ += milliseconds(10);
  });
  loop_.Yield();
  EXPECT_EQ(log_, Words{});
  loop_.Yield();
  EXPECT_EQ(log_, Words{"inner"});
}

TEST_F(Timers, StoppedDoNotFire) {
  const auto timer = loop_.StartTimer(milliseconds(1), Note("stopped"));
  loop_.StopTimer(timer);
  loop_.StopTimer(timer);
  At(milliseconds(5));
  EXPECT_EQ(log_, Words{});
  EXPECT_FALSE(loop_.NextTimer().has_value());
}

TEST_F(Timers, StoppedByAnEarlierTimerOfTheSameStepDoNotFire) {
  PollLoop::Token second = 0;
  loop_.StartTimer(milliseconds(1), [&] { loop_.StopTimer(second); });
  second = loop_.StartTimer(milliseconds(1), Note("second"));
  At(milliseconds(1));
  EXPECT_EQ(log_, Words{});
}

TEST_F(Timers, MayStopThemselvesAndLiveUntilTheyReturn) {
  auto owned = std::make_shared<std::string>("alive");
  const std::weak_ptr<std::string> life = owned;
  PollLoop::Token timer = 0;
  timer = loop_.StartTimer(milliseconds(0), [this, &timer, owned = std::move(owned)] {
    loop_.StopTimer(timer);
    loop_.Yield();
    log_.push_back(*owned);
  });
  loop_.Yield();
  EXPECT_EQ(log_, Words{"alive"});
  EXPECT_TRUE(life.expired());
}

TEST_F(Timers, ThatThrowAreGoneAndTheOthersFireLater) {
  loop_.StartTimer(milliseconds(0), [] { throw std::runtime_error("bad timer"); });
  loop_.StartTimer(milliseconds(0), Note("other"));
  EXPECT_THROW(loop_.Yield(), std::runtime_error);
  EXPECT_EQ(log_, Words{});
  loop_.Yield();
  EXPECT_EQ(log_, Words{"other"});
}

TEST_F(Timers, WithoutDelayStarveNeitherDescriptorsNorOtherTimers) {
  SocketPair pair;
  int rounds = 0;
  std::function<void()> again = [&] {
    ++rounds;
    loop_.StartTimer(milliseconds(0), again);
  };
  again();
  loop_.StartTimer(milliseconds(1), Note("other"));
  loop_.Watch(pair.near, PollLoop::kRead, [&](unsigned) { log_.push_back(pair.Read()); });
  pair.Write("bytes");
  loop_.Yield();
  EXPECT_EQ(log_, Words{"bytes"});
  At(milliseconds(1));
  EXPECT_EQ(log_, (Words{"bytes", "other"}));
  EXPECT_EQ(rounds, 3);
}

TEST_F(Timers, OfAnyDelayAreTaken) {
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

TEST_F(Timers, ByTheThousandFireInOrder) {
  std::vector<int> fired;
  std::vector<PollLoop::Token> tokens;
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

TEST_F(Timers, TellWhenTheFirstFallsDue) {
  EXPECT_FALSE(loop_.NextTimer().has_value());
  loop_.StartTimer(milliseconds(20), Note("20"));
  const auto first = loop_.StartTimer(milliseconds(10), Note("10"));
  EXPECT_EQ(loop_.NextTimer(), PollLoop::Time(milliseconds(10)));
  loop_.StopTimer(first);
  EXPECT_EQ(loop_.NextTimer(), PollLoop::Time(milliseconds(20)));
}

TEST(RealTimers, EndAWaitOfRunUntilNotBeforeTheyAreDue) {
  PollLoop loop;
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
  EXPECT_LE(questions, 4) << "the loop waits instead of spinning";
}

}  // namespace
}  // namespace mirelo::poll
