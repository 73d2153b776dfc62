#pragma once

#include <cstdint>

#include "host/clock.h"

namespace mirelo::testing {

// A clock that stands still until it is told otherwise. It starts on Thursday, 20 January 2011, 08:36:13.
class ManualClock : public host::Clock {
 public:
  ManualClock() : ManualClock({2011, 1, 20, 8, 36, 13}) {}
  explicit ManualClock(const CivilTime& now) { Set(now); }

  void Set(const CivilTime& now);
  // Fractions show only in SecondsSinceMidnight. Midnight is passed as on a real clock; negative is going
  // back.
  void Advance(double seconds);

  Date Now() override;
  double SecondsSinceMidnight() override;
  std::int64_t Second() override;
  const RegionalFormat& Regional() override { return regional; }

  // What Regional() gives; the standard one unless a test changes it.
  RegionalFormat regional;

 private:
  std::int64_t day_ = 0;  // since 30 December 1899
  double seconds_ = 0;    // since midnight
};

}  // namespace mirelo::testing
