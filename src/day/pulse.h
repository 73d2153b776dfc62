#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace mirelo::day {

// How quotes come, for a status line: how many in all, how many a second during the last ten, and how old the
// last one is.
class Pulse {
 public:
  using Clock = std::chrono::steady_clock;

  explicit Pulse(Clock::time_point begin = Clock::now());

  void Beat(std::int64_t quotes = 1, Clock::time_point now = Clock::now());
  std::int64_t Count() const { return count_; }

  // Quotes a second: over the last ten seconds, or since the beginning while that is less.
  double Rate(Clock::time_point now = Clock::now()) const;
  // "5012 quotes, 100.2 a second, the last 0.2 s ago".
  std::string Text(Clock::time_point now = Clock::now()) const;

 private:
  static constexpr std::size_t kSeconds = 10;

  std::int64_t SecondOf(Clock::time_point now) const;

  Clock::time_point begin_;
  std::int64_t count_ = 0;
  Clock::time_point last_{};
  // The quotes of whole seconds since the beginning, each in the place of its number modulo the size; the one
  // that goes on is among them.
  struct Second {
    std::int64_t number = -1;
    std::int64_t quotes = 0;
  };
  std::array<Second, kSeconds + 1> seconds_;
};

}  // namespace mirelo::day
