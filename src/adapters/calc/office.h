#pragma once

#include <functional>

namespace mirelo::calc {

// What the library's loop asks of the office in whose process it lives.
class Office {
 public:
  virtual ~Office() = default;

  // Has `step` called on the office's main thread, in whatever loop the office is in then, those of its
  // dialogs included. False when the office takes no more; the step is not called then. Called on any thread,
  // and may wait for the main one.
  virtual bool Post(std::function<void()> step) = 0;

  // Handles what waits for the main thread by now: windows, the office's own timers, posted steps. Called on
  // the main thread.
  virtual void HandleEvents() = 0;
};

}  // namespace mirelo::calc
