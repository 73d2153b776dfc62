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
  // Its local time. Questions come many to the second, and to work the answer out takes longer than to give
  // it.
  const tm& LocalTime(time_t second);

  RegionalFormat regional_;
  time_t known_second_ = std::numeric_limits<time_t>::min();
  tm local_time_{};  // of the known second
};

}  // namespace mirelo::headless
