#pragma once

#include <cstdint>

#include "automation/date.h"
#include "automation/regional_format.h"

namespace mirelo::host {

// The machine's clock and the user's way of writing dates and numbers.
class Clock {
 public:
  virtual ~Clock() = default;
  // Local date and time, to the second.
  virtual Date Now() = 0;
  // Seconds since local midnight, with fraction.
  virtual double SecondsSinceMidnight() = 0;
  // A number that changes at least whenever Now() does, cheap enough to ask for each record: whoever caches a
  // formatted Now() keys the cache with it.
  virtual std::int64_t Second() = 0;
  // Doesn't change during a run: texts made with it are kept.
  virtual const RegionalFormat& Regional() = 0;
};

}  // namespace mirelo::host
