#pragma once

#include <exception>
#include <utility>

#include "automation/event.h"

namespace mirelo::wire {

// What fails on a timer, kept for whoever waits for the outcome. A timer may fire while the library serves
// the message loop from inside a call of its own, and the library drops in silence what is raised there.
class KeptFailure {
 public:
  // Runs `act`, and keeps what it raises; the first failure only.
  template <class Act>
  void Guard(const Act& act) {
    try {
      act();
    } catch (...) {
      Keep(std::current_exception());
    }
  }

  // The same for one that was caught elsewhere.
  void Keep(std::exception_ptr failure) {
    if (failure_) return;
    failure_ = std::move(failure);
    Came.Raise();
  }

  // A failure was kept, for those who do not wait for the outcome. Raised where it was caught, so a handler
  // does no more than note it, and raises nothing.
  Event<> Came;

  bool HasCome() const { return failure_ != nullptr; }

  // Raises what was kept, if anything was, and forgets it.
  void Raise() {
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
  }

 private:
  std::exception_ptr failure_;
};

}  // namespace mirelo::wire
