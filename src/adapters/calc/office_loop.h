#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "adapters/calc/office.h"
#include "adapters/poll/poll_loop.h"
#include "host/message_loop.h"

namespace mirelo::calc {

class Lookout;

// The message loop of a library that lives in an office: the office does the waiting, and the steps are those
// of the loop over poll(2), so that handlers meet the same rules in both.
//
// The loop, and everything that it calls, lives on the office's main thread. Steps are taken whenever the
// office handles what waits there, also without a Yield or RunUntil on the stack. What fails in such a step
// has no caller, so it goes to `failed`.
class OfficeLoop : public host::MessageLoop {
 public:
  using Time = poll::PollLoop::Time;
  using Failed = std::function<void(std::exception_ptr)>;

  // `now` is where timers get their time from. It must not go back.
  OfficeLoop(std::shared_ptr<Office> office, Failed failed,
             std::function<Time()> now = std::chrono::steady_clock::now);
  ~OfficeLoop() override;
  OfficeLoop(const OfficeLoop&) = delete;
  OfficeLoop& operator=(const OfficeLoop&) = delete;

  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override;
  void Rewatch(Token watch, unsigned interest) override;
  void Unwatch(Token watch) override;
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override;
  void StopTimer(Token timer) override;

  // Leaves the office's own events alone: the stream yields after each quote, and a step that was posted is
  // over soon.
  void Yield() override;
  // Handles the office's events, too.
  void RunUntil(const std::function<bool()>& done) override;

  // For what the office calls in this library by other ways: runs `act`, whose errors must not pass through
  // the office's frames. They are thrown by the innermost call of ours that waits; where there is none they
  // go to `failed`.
  void Guard(const std::function<void()>& act) noexcept;

  // Has the office wait by itself in `call`, as its dialogs do; steps go on meanwhile. When something fails,
  // `leave` is called, which must not fail and is to have `call` return soon. The error is thrown then.
  void WaitIn(const std::function<void()>& call, const std::function<void()>& leave);

  // The office ends: no step is posted from now on.
  void End();

  // How many Yields and RunUntils are under way, one within the other; those of posted steps are among them.
  int Depth() const { return depth_; }

  std::size_t WatchCount() const { return steps_.WatchCount(); }
  std::optional<Time> NextTimer() const { return steps_.NextTimer(); }

 private:
  friend class Lookout;
  class Stepping;
  class Waiting;

  void TakePostedStep() noexcept;
  void Fail(std::exception_ptr failure) const noexcept;
  void HandleOfficeEvents();
  void WaitAWhile() const;
  void ThrowKept();
  void TellLookout();

  const std::function<Time()> now_;
  const std::shared_ptr<Office> office_;
  const Failed failed_;
  const std::shared_ptr<Lookout> lookout_;
  std::deque<std::exception_ptr> kept_;
  std::optional<Time> told_timer_;
  int depth_ = 0;
  // The frames of ours that wait for the office to return, each with what makes it return; null where nothing
  // does.
  std::vector<const std::function<void()>*> waiting_;
  poll::PollLoop steps_;  // last: handlers may end watches of this loop when they are destroyed
};

}  // namespace mirelo::calc
