#pragma once

#include <chrono>

#include "host/message_loop.h"

namespace mirelo {

// How long the main thread works on end, by its own time, so that others of the machine do not count: what a
// person's step would have to wait for. Steps are posted as quickly as they are taken.
class LongestWork {
 public:
  explicit LongestWork(host::MessageLoop& loop) : loop_(loop) { Beat(); }
  ~LongestWork() { loop_.StopTimer(timer_); }
  LongestWork(const LongestWork&) = delete;
  LongestWork& operator=(const LongestWork&) = delete;

  std::chrono::nanoseconds Longest() const { return longest_; }

 private:
  void Beat();

  host::MessageLoop& loop_;
  host::MessageLoop::Token timer_ = 0;
  std::chrono::nanoseconds before_{};
  std::chrono::nanoseconds longest_{};
};

}  // namespace mirelo
