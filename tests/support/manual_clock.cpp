#include "support/manual_clock.h"

#include <cmath>

namespace mirelo::testing {

namespace {
constexpr double kSecondsPerDay = 86'400;
}

void ManualClock::Set(const CivilTime& now) {
  day_ = static_cast<std::int64_t>(ToDate({now.year, now.month, now.day}).serial);
  seconds_ = 0;
  Advance((now.hour * 60.0 + now.minute) * 60.0 + now.second);
}

void ManualClock::Advance(double seconds) {
  seconds_ += seconds;
  const double days = std::floor(seconds_ / kSecondsPerDay);
  day_ += static_cast<std::int64_t>(days);
  seconds_ -= days * kSecondsPerDay;
}

Date ManualClock::Now() {
  CivilTime now = ToCivil({static_cast<double>(day_)});
  now.second = static_cast<int>(seconds_);
  return ToDate(now);
}

double ManualClock::SecondsSinceMidnight() { return seconds_; }

std::int64_t ManualClock::Second() { return day_ * 86'400 + static_cast<std::int64_t>(seconds_); }

}  // namespace mirelo::testing
