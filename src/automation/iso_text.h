#pragma once

#include <string>

#include "automation/date.h"

namespace mirelo {

// A moment as other programs read it, to the nearest second: "2026-11-22" for a day, "14:05:12" for a time of
// day (a serial number from 0 to below 1), "2026-11-22T14:05:12" for both. Error 5 outside the years 100 to
// 9999.
std::string IsoText(Date date);

}  // namespace mirelo
