#pragma once

#include <cstdint>

#include "automation/regional_format.h"
#include "host/clock.h"

namespace mirelo::windows {

// The machine's clock in its local time zone, and the user's way of writing.
class SystemClock : public host::Clock {
 public:
  // Takes the user's way of writing from Windows' settings, once.
  SystemClock();

  Date Now() override;
  double SecondsSinceMidnight() override;
  // Seconds since 1601 in universal time.
  std::int64_t Second() override;
  const RegionalFormat& Regional() override { return regional_; }

 private:
  RegionalFormat regional_;
};

}  // namespace mirelo::windows
