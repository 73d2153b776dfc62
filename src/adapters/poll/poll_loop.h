#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "adapters/poll/polled.h"
#include "adapters/poll/timer_queue.h"
#include "adapters/poll/watch_list.h"
#include "host/message_loop.h"

namespace mirelo::poll {

// The message loop over poll(2), for programs without windows.
//
// A step polls once, fires the timers that are due then and hands each ready descriptor to its handler. A
// descriptor that a nested step has handled meanwhile is passed over: what the outer step knows of it is out
// of date. A descriptor that is closed without Unwatch loses its watch. RunUntil asks `done` again after each
// step and each signal; with nothing watched and no timer it waits for a signal. The loop must outlive its
// own Yield and RunUntil.
class PollLoop final : public host::MessageLoop {
 public:
  using Time = TimerQueue::Time;

  // `now` is where timers get their time from. It must not go back. Waits of RunUntil are always waits of
  // real time.
  explicit PollLoop(std::function<Time()> now = std::chrono::steady_clock::now);
  ~PollLoop() override;
  PollLoop(const PollLoop&) = delete;
  PollLoop& operator=(const PollLoop&) = delete;

  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override;
  void Rewatch(Token watch, unsigned interest) override;
  void Unwatch(Token watch) override;

  // A negative delay counts as 0, one over a hundred years as a hundred years.
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override;
  // A timer that is due at a moment of `now`, as exactly as the machine can wait.
  Token StartTimerAt(Time due, std::function<void()> handler);
  void StopTimer(Token timer) override;

  void Yield() override;
  void RunUntil(const std::function<bool()>& done) override;

  // How many descriptors are watched, those without interest included.
  std::size_t WatchCount() const { return watches_.Count(); }
  // When the first timer falls due; nothing without timers.
  std::optional<Time> NextTimer() const { return timers_.Next(); }
  // What the next step waits for, as poll(2) takes it: for another loop that does the waiting itself.
  const std::vector<pollfd>& Polled() const { return watches_.Polled(); }

 private:
  void Step(WatchList::Limit limit);
  WatchList::Limit TimeToNextTimer() const;
  void FireTimers(Time now, Token last);
  void HandOver(const WatchList::Ready& ready, std::uint64_t poll);

  std::function<Time()> now_;
  WatchList watches_;
  TimerQueue timers_;
  Token last_token_ = 0;         // of watches and timers alike
  std::uint64_t last_poll_ = 0;  // polls are numbered from 1
};

}  // namespace mirelo::poll
