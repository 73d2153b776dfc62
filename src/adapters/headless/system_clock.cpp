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

tm LocalTime(time_t moment) {
  tm local{};
  localtime_r(&moment, &local);
  return local;
}

}  // namespace

SystemClock::SystemClock() : regional_(EnvironmentFormat()) {}

Date SystemClock::Now() {
  const tm local = LocalTime(Moment().tv_sec);
  return ToDate(
      {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
}

double SystemClock::SecondsSinceMidnight() {
  const timespec moment = Moment();
  const tm local = LocalTime(moment.tv_sec);
  return (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec + static_cast<double>(moment.tv_nsec) / 1e9;
}

std::int64_t SystemClock::Second() { return Moment().tv_sec; }

}  // namespace mirelo::headless
