#pragma once

#include <deque>
#include <exception>
#include <functional>

namespace mirelo::windows {

// Errors of what Windows calls in this library. They must not pass through its frames, so they wait here for
// a frame of ours.
class Failures {
 public:
  // Runs `act` and keeps what it throws.
  void Guard(const std::function<void()>& act) noexcept;

  bool Any() const { return !kept_.empty(); }
  // Throws the first that was kept, if any.
  void Throw();

 private:
  std::deque<std::exception_ptr> kept_;
};

}  // namespace mirelo::windows
