#include "day/pulse.h"

#include <algorithm>
#include <cmath>

#include "automation/number.h"

namespace mirelo::day {

namespace {

double Seconds(Pulse::Clock::duration time) { return std::chrono::duration<double>(time).count(); }

std::string Age(double seconds) {
  if (seconds < 60) return NumberText(std::round(seconds * 10) / 10) + " s";
  return NumberText(std::floor(seconds / 60)) + " min";
}

}  // namespace

Pulse::Pulse(Clock::time_point begin) : begin_(begin) {}

void Pulse::Beat(std::int64_t quotes, Clock::time_point now) {
  count_ += quotes;
  last_ = now;
  const std::int64_t number = SecondOf(now);
  Second& second = seconds_[static_cast<std::size_t>(number) % seconds_.size()];
  if (second.number != number) second = {number, 0};
  second.quotes += quotes;
}

// Over whole seconds, and what has passed of this one.
double Pulse::Rate(Clock::time_point now) const {
  const std::int64_t this_second = SecondOf(now);
  const std::int64_t first = std::max<std::int64_t>(0, this_second - static_cast<std::int64_t>(kSeconds));
  std::int64_t quotes = 0;
  for (const Second& second : seconds_) {
    if (second.number >= first && second.number <= this_second) quotes += second.quotes;
  }
  const double span = Seconds(now - begin_) - static_cast<double>(first);
  return static_cast<double>(quotes) / std::max(span, 1.0);
}

std::string Pulse::Text(Clock::time_point now) const {
  std::string text = std::to_string(count_) + (count_ == 1 ? " quote" : " quotes");
  if (count_ == 0) return text;
  text += ", " + NumberText(std::round(Rate(now) * 10) / 10) + " a second";
  return text + ", the last " + Age(Seconds(now - last_)) + " ago";
}

std::int64_t Pulse::SecondOf(Clock::time_point now) const {
  return std::max<std::int64_t>(0, std::chrono::duration_cast<std::chrono::seconds>(now - begin_).count());
}

}  // namespace mirelo::day
