#pragma once

#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <utility>
#include <vector>

namespace mirelo::windows {

// Where an error goes that must not pass through frames of Windows: to the innermost call of ours that waits
// for these frames to return, or, where none waits, to somebody who is told of it.
class LoopFailures {
 public:
  using Failed = std::function<void(std::exception_ptr)>;

  explicit LoopFailures(Failed failed) : failed_(std::move(failed)) {}

  // Runs what Windows calls in this library by whatever way.
  template <class Act>
  void Guard(const Act& act) noexcept {
    try {
      act();
    } catch (...) {
      if (waiting_.empty()) return failed_(std::current_exception());
      kept_.push_back(std::current_exception());
      if (waiting_.back() != nullptr) (*waiting_.back())();
    }
  }

  // Runs `call`, in which Windows runs a loop of messages, and raises what failed meanwhile. When something
  // fails, `leave` is called, which must not fail and is to have `call` return soon.
  template <class Call>
  void WaitIn(const Call& call, const std::function<void()>* leave) {
    {
      const Waiting waiting(*this, leave);
      call();
    }
    ThrowKept();
  }

 private:
  class Waiting {
   public:
    Waiting(LoopFailures& of, const std::function<void()>* leave) : of_(of) { of_.waiting_.push_back(leave); }
    ~Waiting() { of_.waiting_.pop_back(); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

   private:
    LoopFailures& of_;
  };

  void ThrowKept() {
    if (kept_.empty()) return;
    const std::exception_ptr first = kept_.front();
    kept_.pop_front();
    std::rethrow_exception(first);
  }

  const Failed failed_;
  std::deque<std::exception_ptr> kept_;
  // Each with what makes it return; null where it returns soon by itself.
  std::vector<const std::function<void()>*> waiting_;
};

}  // namespace mirelo::windows
