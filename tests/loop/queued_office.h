#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "adapters/calc/office.h"
#include "adapters/calc/office_loop.h"

namespace mirelo {

// An office whose main thread is the test's: what is posted waits until the test has events handled.
class QueuedOffice : public calc::Office {
 public:
  bool Post(std::function<void()> step) override {
    {
      const std::lock_guard lock(mutex_);
      if (closed_) return false;
      posted_.push_back(std::move(step));
    }
    came_.notify_one();
    return true;
  }

  void HandleEvents() override {
    for (const auto& step : TakeAll()) step();
  }

  // As an office without anything else to do: its own loop, or that of a dialog. False when `done` was not
  // true in time.
  bool RunUntil(const std::function<bool()>& done) {
    const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!done()) {
      if (std::chrono::steady_clock::now() > patience) return false;
      WaitForPosted(std::chrono::milliseconds(5));
      HandleEvents();
    }
    return true;
  }

  // How many steps are posted after so long.
  std::size_t WaitForPosted(std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    came_.wait_for(lock, limit, [&] { return !posted_.empty(); });
    return posted_.size();
  }
  std::size_t Posted() {
    const std::lock_guard lock(mutex_);
    return posted_.size();
  }

  void Close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
  }

 private:
  std::deque<std::function<void()>> TakeAll() {
    const std::lock_guard lock(mutex_);
    return std::exchange(posted_, {});
  }

  std::mutex mutex_;
  std::condition_variable came_;
  std::deque<std::function<void()>> posted_;
  bool closed_ = false;
};

// Waits until nobody else knows the office: the thread of a loop ends, and closes its descriptors, on its own
// time, and tests count on the numbers of theirs.
inline void WaitUntilLeft(const std::shared_ptr<QueuedOffice>& office) {
  while (office.use_count() > 1) std::this_thread::sleep_for(std::chrono::microseconds(50));
}

// The loop in such an office, made as the other loops are. The office is left behind it.
struct LeftOffice {
  ~LeftOffice() { WaitUntilLeft(office); }
  std::shared_ptr<QueuedOffice> office = std::make_shared<QueuedOffice>();
};
class LoopInAnOffice : private LeftOffice, public calc::OfficeLoop {
 public:
  explicit LoopInAnOffice(std::function<Time()> now = std::chrono::steady_clock::now)
      : OfficeLoop(
            office, [](std::exception_ptr) { std::terminate(); }, std::move(now)) {}
};

}  // namespace mirelo
