#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <random>
#include <string>

#include "loop/tested_loops.h"
#include "support/socket_pair.h"

namespace mirelo {
namespace {

using host::MessageLoop;
using testing::SocketPair;

using std::chrono::milliseconds;

// Handlers of four descriptors and of timers that do to the loop, at random, whatever handlers may do, and
// check at each call that the loop was right to make it. The bytes of each pair count up, so that a lost one
// would show.
class Soak {
 public:
  Soak(LoopKind kind, unsigned seed) : random_(seed), loop_(kind, [this] { return now_; }) {
    for (std::size_t pair = 0; pair < kPairs; ++pair) Watch(pair);
  }

  void Run(int actions) {
    while (actions_ < actions) {
      Act();
      loop_.Yield();
    }
  }

  // Ends the random acts, and has what was written read to the end.
  void Drain() {
    quiet_ = true;
    for (std::size_t pair = 0; pair < kPairs; ++pair) {
      if (watches_.count(pairs_[pair].token) == 0) Watch(pair);
      SetInterest(pair, MessageLoop::kRead);
    }
    now_ += milliseconds(1000);
    loop_.RunUntil([&] {
      return timers_.empty() &&
             std::all_of(pairs_.begin(), pairs_.end(), [](const Pair& p) { return p.read == p.written; });
    });
    EXPECT_EQ(loop_.WatchCount(), kPairs);
    EXPECT_EQ(depth_, 0);
  }

  int DeepestOfOneWatch() const { return deepest_of_one_watch_; }
  std::uint64_t BytesRead() const {
    std::uint64_t sum = 0;
    for (const Pair& pair : pairs_) sum += pair.read;
    return sum;
  }
  int TimersFired() const { return timers_fired_; }

 private:
  static constexpr std::size_t kPairs = 4;
  static constexpr int kDeepest = 60;  // of all handlers on the stack, to keep the stack small

  struct Pair {
    SocketPair sockets;
    MessageLoop::Token token = 0;
    std::uint64_t written = 0, read = 0;
  };
  struct WatchState {
    unsigned interest;
    int depth = 0;
  };

  unsigned Pick(unsigned count) { return std::uniform_int_distribution<unsigned>(0, count - 1)(random_); }

  void Watch(std::size_t pair) {
    pairs_[pair].token =
        loop_.Watch(pairs_[pair].sockets.near, MessageLoop::kRead,
                    [this, pair, own = ++last_own_](unsigned ready) { OnReady(pair, own, ready); });
    owns_[last_own_] = pairs_[pair].token;
    watches_[pairs_[pair].token] = {MessageLoop::kRead};
  }

  void Unwatch(std::size_t pair) {
    loop_.Unwatch(pairs_[pair].token);
    watches_.erase(pairs_[pair].token);
  }

  void SetInterest(std::size_t pair, unsigned interest) {
    loop_.Rewatch(pairs_[pair].token, interest);
    const auto watch = watches_.find(pairs_[pair].token);
    if (watch != watches_.end()) watch->second.interest = interest;
  }

  void OnReady(std::size_t pair, std::uint64_t own, unsigned ready) {
    const MessageLoop::Token token = owns_.at(own);
    const auto watch = watches_.find(token);
    ASSERT_NE(watch, watches_.end()) << "called after Unwatch";
    ASSERT_NE(ready, 0u);
    ASSERT_EQ(ready & ~watch->second.interest, 0u) << "called for what was not asked";
    deepest_of_one_watch_ = std::max(deepest_of_one_watch_, ++watch->second.depth);
    ASSERT_LE(watch->second.depth, MessageLoop::kNestLimit);
    ++depth_;
    if ((ready & MessageLoop::kRead) != 0) {
      const std::string bytes = pairs_[pair].sockets.Read(1 + Pick(20));
      ASSERT_FALSE(bytes.empty()) << "called with nothing to read";
      for (const char byte : bytes) ASSERT_EQ(byte, static_cast<char>(pairs_[pair].read++));
    }
    Act();
    --depth_;
    if (const auto after = watches_.find(token); after != watches_.end()) --after->second.depth;
  }

  void StartTimer() {
    const AnyLoop::Time due = now_ + milliseconds(Pick(4));
    const std::uint64_t own = ++last_own_;
    const auto token =
        loop_.StartTimer(std::chrono::duration_cast<milliseconds>(due - now_), [this, own, due] {
          ASSERT_EQ(timers_.erase(own), 1u) << "fired twice or after StopTimer";
          ASSERT_LE(due, now_);
          ++timers_fired_;
          ++depth_;
          Act();
          --depth_;
        });
    timers_[own] = token;
  }

  void StopTimer() {
    if (timers_.empty()) return;
    const auto timer = std::next(timers_.begin(), Pick(static_cast<unsigned>(timers_.size())));
    loop_.StopTimer(timer->second);
    timers_.erase(timer);
  }

  void Write(std::size_t pair) {
    std::string bytes(1 + Pick(30), '\0');
    for (char& byte : bytes) byte = static_cast<char>(pairs_[pair].written++);
    pairs_[pair].sockets.Write(bytes);
  }

  void Act() {
    if (quiet_) return;
    for (unsigned act = Pick(4); act > 0; --act) {
      ++actions_;
      const std::size_t pair = Pick(kPairs);
      switch (Pick(10)) {
        case 0:
          Unwatch(pair);
          break;
        case 1:
          if (watches_.count(pairs_[pair].token) == 0) Watch(pair);
          break;
        case 2:
          SetInterest(pair, Pick(4));
          break;
        case 3:
          SetInterest(pair, MessageLoop::kRead);
          break;
        case 4:
          StartTimer();
          break;
        case 5:
          StopTimer();
          break;
        case 6:
          now_ += milliseconds(1);
          break;
        case 7:
          if (depth_ < kDeepest) loop_.Yield();
          break;
        case 8:
          if (depth_ < kDeepest) RunAFewSteps();
          break;
        default:
          if (pairs_[pair].written - pairs_[pair].read < 10'000) Write(pair);
      }
    }
  }

  void RunAFewSteps() {
    int steps = 1 + static_cast<int>(Pick(3));
    loop_.RunUntil([&] {
      now_ += milliseconds(1);
      loop_.StartTimer(milliseconds(0), [] {});  // something to wait for at least
      return --steps < 0;
    });
  }

  std::mt19937 random_;
  AnyLoop::Time now_{};
  std::array<Pair, kPairs> pairs_;
  std::map<MessageLoop::Token, WatchState> watches_;    // those that have not ended
  std::map<std::uint64_t, MessageLoop::Token> owns_;    // by the number that a handler knows
  std::map<std::uint64_t, MessageLoop::Token> timers_;  // those that wait, likewise
  std::uint64_t last_own_ = 0;
  int depth_ = 0, deepest_of_one_watch_ = 0, actions_ = 0, timers_fired_ = 0;
  bool quiet_ = false;
  AnyLoop loop_;
};

using LoopSoak = LoopTest;
INSTANTIATE_WITH_EVERY_LOOP(LoopSoak);

// Under Wine sockets are slow.
#ifdef _WIN32
constexpr int kActs = 600;
#else
constexpr int kActs = 20'000;
#endif

TEST_P(LoopSoak, KeepsItsRulesWhateverHandlersDo) {
  for (const unsigned seed : {1u, 2u, 3u, 4u}) {
    SCOPED_TRACE(seed);
    Soak soak(GetParam(), seed);
    soak.Run(kActs);
    soak.Drain();
    if (HasFatalFailure()) return;
    EXPECT_GT(soak.DeepestOfOneWatch(), 2) << "the acts nest";
    EXPECT_GT(soak.BytesRead(), static_cast<std::uint64_t>(kActs) / 2);
    EXPECT_GT(soak.TimersFired(), kActs / 40);
  }
}

}  // namespace
}  // namespace mirelo
