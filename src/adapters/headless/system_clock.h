#pragma once

#include <time.h>

#include <cstdint>
#include <limits>

#include "automation/regional_format.h"
#include "host/clock.h"

namespace mirelo::headless {

// The machine's clock in its local time zone.
class SystemClock : public host::Clock {
 public:
  // Takes the regional format from the environment (EnvironmentFormat), once.
  SystemClock();

  Date Now() override;
  double SecondsSinceMidnight() override;
  // Seconds since 1970 in universal time.
  std::int64_t Second() override;
  const RegionalFormat& Regional() override { return regional_; }

 private:
  // The local time of that second. Many questions come within one second, so the last answer is kept. It
  // holds until the next call.
  const tm& LocalTime(time_t second);

  RegionalFormat regional_;
  time_t known_second_ = std::numeric_limits<time_t>::min();
  tm local_time_{};  // of the known second
};

}  // namespace mirelo::headless
