#pragma once

#include <chrono>
#include <ctime>

namespace mirelo::testing {

// What the calling thread has used of the processor. For tests that something ends at all, where work that
// grows with the square would take minutes: other programs on the machine add nothing to it.
inline std::chrono::nanoseconds ProcessorTime() {
  timespec used{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
  return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

}  // namespace mirelo::testing
