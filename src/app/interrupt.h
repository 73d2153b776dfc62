#pragma once

#include "automation/event.h"
#include "host/message_loop.h"
#include "terminal/caught_stops.h"

namespace mirelo::app {

// Turns what asks the program to stop (terminal::CaughtStops) into something that the message loop sees,
// so that it ends in order. One may exist at a time.
class Interrupt {
 public:
  // What becomes of a second one: it ends the program at once, whether or not the first was seen by then, or
  // it is seen as the first was, for programs that have something to end then.
  using Second = terminal::CaughtStops::Second;

  explicit Interrupt(host::MessageLoop& loop, Second second = Second::kEndsTheProcess);
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
  terminal::CaughtStops stops_;
  host::MessageLoop::Token watch_ = 0;
  bool requested_ = false;
};

}  // namespace mirelo::app
