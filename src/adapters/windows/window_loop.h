#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "adapters/windows/loop_failures.h"
#include "adapters/windows/message_window.h"
#include "host/message_loop.h"

namespace mirelo::windows {

// The message loop of a library that lives in a program of Windows: whatever loop of messages the program
// runs on the thread does the waiting, and the steps are those of the loop over poll(2), so that handlers
// meet the same rules in both.
//
// The loop, and everything that it calls, lives on the thread that made it. Steps are taken whenever messages
// are taken there, also without a Yield or RunUntil on the stack; timers are then as exact as the system's,
// some 15 milliseconds. What fails in such a step has no caller, so it goes to `failed`.
class WindowLoop : public host::MessageLoop {
 public:
  using Time = poll::PollLoop::Time;
  using Failed = LoopFailures::Failed;

  // `now` is where timers get their time from. It must not go back.
  explicit WindowLoop(Failed failed, std::function<Time()> now = std::chrono::steady_clock::now);
  ~WindowLoop() override;
  WindowLoop(const WindowLoop&) = delete;
  WindowLoop& operator=(const WindowLoop&) = delete;

  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override;
  void Rewatch(Token watch, unsigned interest) override;
  void Unwatch(Token watch) override;
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override;
  void StopTimer(Token timer) override;

  // Both take the thread's other messages, too. A message that the program is to end is put back for its own
  // loop.
  void Yield() override;
  void RunUntil(const std::function<bool()>& done) override;

  // For what Windows calls in this library by other ways: runs `act`, whose errors must not pass through
  // Windows' frames. They are thrown by the innermost call of ours that waits; where there is none they go to
  // `failed`.
  void Guard(const std::function<void()>& act) noexcept { failures_.Guard(act); }
  // Has Windows wait by itself in `call`, as its dialogs do; steps go on meanwhile. When something fails,
  // `leave` is called, which must not fail and is to have `call` return soon. The error is thrown then.
  void WaitIn(const std::function<void()>& call, const std::function<void()>& leave) {
    failures_.WaitIn(call, &leave);
  }

  std::size_t WatchCount() const { return steps_.WatchCount(); }
  std::optional<Time> NextTimer() const { return steps_.NextTimer(); }

 private:
  class Stepping;

  void TakeMessage(unsigned message, std::uintptr_t of);
  void TakeOwnSocketMessages();
  void Forget(unsigned message, std::uintptr_t of);
  void HandleMessages();
  void WaitForMessages() const;
  void AskForSteps();
  void AskOfSockets();
  void TellOfWhatIsReady(std::vector<poll::pollfd> sockets) const;
  void AskOfTimer();

  const std::function<Time()> now_;
  LoopFailures failures_;
  MessageWindow window_;
  std::map<int, short> asked_;  // the sockets that may send messages, and of which events
  std::optional<Time> asked_timer_;
  std::optional<int> exit_code_;  // of a program that is to end
  int depth_ = 0;                 // of Yields and RunUntils
  poll::PollLoop steps_;          // last: handlers may end watches of this loop when they are destroyed
};

}  // namespace mirelo::windows
