#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>

#include "adapters/poll/poll_loop.h"
#include "host/message_loop.h"

namespace mirelo {

// The message loops, of which all tests of this folder hold.
enum class LoopKind {
  kPoll,
#ifdef _WIN32
  kProgram,
#else
  kQt,
  kOffice,
#endif
};
void PrintTo(LoopKind kind, std::ostream* out);

// A loop of one of these kinds, and what all of them tell of themselves. A value and not a type of its own,
// so that tests are compiled once for all loops.
class AnyLoop final : public host::MessageLoop {
 public:
  using Time = poll::PollLoop::Time;

  explicit AnyLoop(LoopKind kind, std::function<Time()> now = std::chrono::steady_clock::now);

  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override;
  void Rewatch(Token watch, unsigned interest) override;
  void Unwatch(Token watch) override;
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override;
  void StopTimer(Token timer) override;
  void Yield() override;
  void RunUntil(const std::function<bool()>& done) override;

  std::size_t WatchCount() const { return watch_count_(); }
  std::optional<Time> NextTimer() const { return next_timer_(); }

 private:
  template <class Loop>
  void Make(std::function<Time()> now);

  std::function<std::size_t()> watch_count_;
  std::function<std::optional<Time>()> next_timer_;
  std::unique_ptr<host::MessageLoop> loop_;  // last: handlers may end watches of it when they are destroyed
};

using LoopTest = ::testing::TestWithParam<LoopKind>;

// Has a suite of LoopTest's hold of every loop: as Poll/Suite, Qt/Suite and so on, for CTest has an entry for
// each of these.
#ifdef _WIN32
#define INSTANTIATE_WITH_EVERY_LOOP(Suite)                                             \
  INSTANTIATE_TEST_SUITE_P(Poll, Suite, ::testing::Values(::mirelo::LoopKind::kPoll)); \
  INSTANTIATE_TEST_SUITE_P(Program, Suite, ::testing::Values(::mirelo::LoopKind::kProgram))
#else
#define INSTANTIATE_WITH_EVERY_LOOP(Suite)                                             \
  INSTANTIATE_TEST_SUITE_P(Poll, Suite, ::testing::Values(::mirelo::LoopKind::kPoll)); \
  INSTANTIATE_TEST_SUITE_P(Qt, Suite, ::testing::Values(::mirelo::LoopKind::kQt));     \
  INSTANTIATE_TEST_SUITE_P(Office, Suite, ::testing::Values(::mirelo::LoopKind::kOffice))
#endif

}  // namespace mirelo
