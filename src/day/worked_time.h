#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>

namespace mirelo::day {

// What the processor has worked in this process, from some moment on: what others take of the machine is no
// work of this. On Windows, whose C library knows no other, the time that has passed.
inline std::chrono::microseconds TimeWorked() {
  return std::chrono::microseconds(std::int64_t{std::clock()} * (1'000'000 / CLOCKS_PER_SEC));
}

}  // namespace mirelo::day
