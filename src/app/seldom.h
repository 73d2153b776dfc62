#pragma once

#include <chrono>
#include <map>
#include <string>

namespace mirelo::app {

// Keeps what is told again and again from filling a log: of each line, its numbers aside, one is due in a
// minute.
class Seldom {
 public:
  using Time = std::chrono::steady_clock::time_point;
  static constexpr std::chrono::minutes kPace{1};

  // Whether the line is to be told now; the next ones like it are then not.
  bool IsDue(const std::string& line, Time now = std::chrono::steady_clock::now());

 private:
  std::map<std::string, Time> told_;
};

}  // namespace mirelo::app
