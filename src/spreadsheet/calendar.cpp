#include "spreadsheet/calendar.h"

#include <cmath>
#include <cstdint>

namespace mirelo::spreadsheet {

namespace {

constexpr std::int64_t kFalseDay = 60;

bool IsFalseDay(const CivilTime& civil) { return civil.year == 1900 && civil.month == 2 && civil.day == 29; }

CivilTime DateOfDay(std::int64_t day) {
  CivilTime civil;
  if (day == 0 || day == kFalseDay) {
    civil.year = 1900;
    civil.month = day == 0 ? 1 : 2;
    civil.day = day == 0 ? 0 : 29;
    return civil;
  }
  return ToCivil(Date{static_cast<double>(day < kFalseDay ? day + 1 : day)});
}

}  // namespace

double SerialOf(const CivilTime& civil) {
  const double serial = ToDate(civil).serial;
  if (IsFalseDay(civil)) return serial - 1;  // automation carried it over to 1 March, day 61
  return serial < kFalseDay + 1 ? serial - 1 : serial;
}

SheetTime TimeOfSerial(double serial) {
  const auto total = static_cast<std::int64_t>(std::llround(serial * kSecondsPerDay));
  const std::int64_t day = total / kSecondsPerDay;
  const std::int64_t second = total % kSecondsPerDay;

  SheetTime time{DateOfDay(day), static_cast<int>((day + 6) % 7) + 1};
  time.civil.hour = static_cast<int>(second / 3600);
  time.civil.minute = static_cast<int>(second / 60 % 60);
  time.civil.second = static_cast<int>(second % 60);
  return time;
}

}  // namespace mirelo::spreadsheet
