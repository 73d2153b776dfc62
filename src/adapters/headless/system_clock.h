#pragma once

#include <cstdint>

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
  RegionalFormat regional_;
};

}  // namespace mirelo::headless
