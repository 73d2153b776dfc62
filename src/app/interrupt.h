#pragma once

#include <csignal>

#include "automation/event.h"
#include "host/message_loop.h"

namespace mirelo::app {

// Turns what asks the program to stop (terminal::SeenStopSignals) into something that the message loop sees,
// so that it ends in order. One may exist at a time.
class Interrupt {
 public:
  // What becomes of a second one: it ends the program at once, as if nothing were caught, or it is seen as
  // the first was, for programs that have something to end then.
  enum class Second { kEndsTheProgram, kIsSeen };

  explicit Interrupt(host::MessageLoop& loop, Second second = Second::kEndsTheProgram);
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  // Whether the person asked to stop.
  bool Requested() const { return requested_; }
  // Waits for the next one.
  void Forget() { requested_ = false; }
  // Raised when the person does, from the loop.
  Event<> Stopped;

  // Lets the loop run for this time, or until the person asks to stop. True when the time passed.
  bool Pause(host::MessageLoop::Milliseconds time);

 private:
  host::MessageLoop& loop_;
  sigset_t signals_;
  int descriptor_ = -1;
  host::MessageLoop::Token watch_ = 0;
  bool requested_ = false;
};

}  // namespace mirelo::app
