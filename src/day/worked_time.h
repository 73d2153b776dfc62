#pragma once

#include <chrono>
#include <ctime>

namespace mirelo::day {

// The time that the processor has worked in this process since std::clock() gave `start`.
inline std::chrono::duration<double> WorkedSince(std::clock_t start) {
  return std::chrono::duration<double>(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
}

}  // namespace mirelo::day
