#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace mirelo::day {

// How quotes come, for a status line: how many in all, how many a second since the line was last made, and
// how old the last one is.
class Pulse {
 public:
  void Beat(std::int64_t quotes = 1) {
    count_ += quotes;
    last_ = Clock::now();
  }
  std::int64_t Count() const { return count_; }

  // "5012 quotes, 1002 a second, the last 0.2 s ago".
  std::string Text();

 private:
  using Clock = std::chrono::steady_clock;

  std::int64_t count_ = 0;
  std::int64_t counted_ = 0;  // until the line was last made
  Clock::time_point made_ = Clock::now();
  Clock::time_point last_{};
};

}  // namespace mirelo::day
