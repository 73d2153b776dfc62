#include "adapters/headless/system_clock.h"

#include <time.h>

#include "adapters/headless/environment_format.h"

namespace mirelo::headless {

namespace {

// As the kernel last noted it, some milliseconds ago at worst: the second is asked for with each streamed
// quote, and reading the counter would take longer than the rest of the answer.
timespec Moment() {
  timespec moment{};
  clock_gettime(CLOCK_REALTIME_COARSE, &moment);
  return moment;
}

}  // namespace

SystemClock::SystemClock() : regional_(EnvironmentFormat()) {}

Date SystemClock::Now() {
  const tm& local = LocalTime(Moment().tv_sec);
  return ToDate(
      {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
}

double SystemClock::SecondsSinceMidnight() {
  const timespec moment = Moment();
  const tm& local = LocalTime(moment.tv_sec);
  return (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec + static_cast<double>(moment.tv_nsec) / 1e9;
}

std::int64_t SystemClock::Second() { return Moment().tv_sec; }

const tm& SystemClock::LocalTime(time_t second) {
  if (second != known_second_) {
    localtime_r(&second, &local_time_);
    known_second_ = second;
  }
  return local_time_;
}

}  // namespace mirelo::headless
