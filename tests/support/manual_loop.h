#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>

#include "adapters/poll/poll_loop.h"
#include "host/message_loop.h"

namespace mirelo::testing {

// A message loop whose time stands still until a test moves it. Descriptors are real ones. Link mirelo_poll.
class ManualLoop final : public host::MessageLoop {
 public:
  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override {
    return loop_.Watch(descriptor, interest, std::move(handler));
  }
  void Rewatch(Token watch, unsigned interest) override { loop_.Rewatch(watch, interest); }
  void Unwatch(Token watch) override { loop_.Unwatch(watch); }
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override {
    return loop_.StartTimer(delay, std::move(handler));
  }
  void StopTimer(Token timer) override { loop_.StopTimer(timer); }
  void Yield() override { loop_.Yield(); }

  // Waits for descriptors only. With none watched and no timer due there is nothing to wait for: the time
  // skips to the next timer when the test has allowed it, else (and without timers) std::logic_error is
  // thrown, so that a test fails instead of hanging.
  void RunUntil(const std::function<bool()>& done) override {
    loop_.RunUntil([&] {
      if (done()) return true;
      const std::optional<Time> next = loop_.NextTimer();
      if (loop_.WatchCount() > 0 || (next && *next <= now_)) return false;
      if (!next || !skips_waits_) throw std::logic_error("RunUntil waits for what never comes");
      now_ = *next;
      return false;
    });
  }

  // Moves the time, stopping at each timer that falls due on the way, and handles what is pending. It does
  // not end while a timer starts itself anew without delay.
  void Advance(Milliseconds time) {
    const Time end = now_ + time;
    for (auto next = loop_.NextTimer(); next && *next <= end; next = loop_.NextTimer()) {
      now_ = std::max(now_, *next);
      loop_.Yield();
    }
    now_ = std::max(now_, end);  // a handler may have moved it further
    loop_.Yield();
  }

  // From now on a RunUntil that has nothing else to wait for moves the time to the next timer.
  void SkipWaits() { skips_waits_ = true; }

  // The time that has passed since the loop was made.
  Milliseconds Elapsed() const { return std::chrono::duration_cast<Milliseconds>(now_ - Time{}); }

  // Whether any timer is waiting, and in how long it falls due.
  std::optional<Milliseconds> NextTimer() const {
    const std::optional<Time> next = loop_.NextTimer();
    if (!next) return std::nullopt;
    return std::chrono::duration_cast<Milliseconds>(*next - now_);
  }
  std::size_t WatchCount() const { return loop_.WatchCount(); }

 private:
  using Time = poll::PollLoop::Time;
  Time now_{};
  bool skips_waits_ = false;
  poll::PollLoop loop_{[this] { return now_; }};
};

}  // namespace mirelo::testing
