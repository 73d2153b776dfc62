#include "adapters/windows/views/failures.h"

namespace mirelo::windows {

void Failures::Guard(const std::function<void()>& act) noexcept {
  try {
    act();
  } catch (...) {
    kept_.push_back(std::current_exception());
  }
}

void Failures::Throw() {
  if (kept_.empty()) return;
  const std::exception_ptr first = kept_.front();
  kept_.pop_front();
  std::rethrow_exception(first);
}

}  // namespace mirelo::windows
