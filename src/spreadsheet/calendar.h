#pragma once

#include <cstdint>

#include "automation/date.h"

namespace mirelo::spreadsheet {

// The spreadsheet's calendar: day 1 is 1 January 1900, and that year has a 29 February, day 60, which never
// was. From 1 March 1900, day 61, its numbers are those of automation dates.

inline constexpr std::int32_t kLastDay = 2'958'465;  // 31 December 9999

// The number by which cells hold a moment.
double SerialOf(const CivilTime& civil);

// A day's number taken apart into date and time, rounded to the nearest second. Day 0 is "0 January 1900".
// The number must not be negative nor, when so rounded, lie beyond kLastDay.
struct SheetTime {
  CivilTime civil;
  int weekday;  // 1 Sunday to 7 Saturday, as the spreadsheet counts them through its false day
};
SheetTime TimeOfSerial(double serial);

}  // namespace mirelo::spreadsheet
