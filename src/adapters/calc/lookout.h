#pragma once

#include <poll.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "adapters/poll/descriptor.h"

namespace mirelo::calc {

class Office;
class OfficeLoop;

// Waits, on a thread of its own, for what the loop on the main thread would wait for, and posts a step when
// something is due: one at a time, so that an office that is busy finds one step when it is back, not many.
//
// It outlives its loop until its thread has seen the end. That may be waiting for the main thread while it
// posts, so nobody ever waits for it.
class Lookout : public std::enable_shared_from_this<Lookout> {
 public:
  using Time = std::chrono::steady_clock::time_point;

  // Makes the lookout of this loop and starts its thread, which waits for nothing yet.
  static std::shared_ptr<Lookout> Of(OfficeLoop& loop, std::shared_ptr<Office> office);

  // These are called on the main thread.

  // What to wait for, as the loop's last step left it. Without `timer` the timer stays.
  void WaitFor(const std::vector<pollfd>& polled);
  void WaitFor(const std::vector<pollfd>& polled, std::optional<std::chrono::nanoseconds> timer);
  // Between these two the loop steps or waits by itself, and nothing is posted. They may nest.
  void StepBegins();
  void StepEnds();
  // No step is taken from now on.
  void End();

 private:
  Lookout(OfficeLoop& loop, std::shared_ptr<Office> office);

  void Run();
  bool IsTimeToLook();
  bool Look();
  bool Post();
  void TakeStep();
  void Wake() const;

  OfficeLoop* loop_;  // the main thread's; null when it is gone
  const std::shared_ptr<Office> office_;
  poll::Descriptor woken_;
  poll::Descriptor waking_;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<pollfd> polled_;
  std::optional<Time> due_;
  bool posted_ = false;
  int stepping_ = 0;
  bool ended_ = false;
};

}  // namespace mirelo::calc
