#include "day/pulse.h"

#include <cmath>
#include <utility>

#include "automation/number.h"

namespace mirelo::day {

namespace {

double Seconds(std::chrono::steady_clock::duration time) {
  return std::chrono::duration<double>(time).count();
}

std::string Age(double seconds) {
  if (seconds < 60) return NumberText(std::round(seconds * 10) / 10) + " s";
  return NumberText(std::floor(seconds / 60)) + " min";
}

}  // namespace

std::string Pulse::Text() {
  const auto now = Clock::now();
  const double span = Seconds(now - std::exchange(made_, now));
  const auto fresh = static_cast<double>(count_ - std::exchange(counted_, count_));
  std::string text = std::to_string(count_) + (count_ == 1 ? " quote" : " quotes");
  if (count_ == 0) return text;
  if (span > 0) text += ", " + NumberText(std::round(fresh / span)) + " a second";
  return text + ", the last " + Age(Seconds(now - last_)) + " ago";
}

}  // namespace mirelo::day
