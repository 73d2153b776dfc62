#pragma once

#include <chrono>
#include <map>
#include <string>

namespace mirelo::app {

// Keeps what is told again and again from filling a log: it lets a line through once in a minute. Lines that
// differ in their numbers alone are one line.
class Seldom {
 public:
  using Time = std::chrono::steady_clock::time_point;
  static constexpr std::chrono::minutes kPace{1};

  // Whether the line is to be told now. If so, it counts as told.
  bool IsDue(const std::string& line, Time now = std::chrono::steady_clock::now());

 private:
  std::map<std::string, Time> told_;
};

}  // namespace mirelo::app
