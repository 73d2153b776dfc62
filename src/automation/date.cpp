#include "automation/date.h"

#include <cmath>

#include "automation/runtime_error.h"

namespace mirelo {

namespace {

constexpr std::int64_t kDaysFromEpochTo1970 = 25'569;  // 30 December 1899 to 1 January 1970
constexpr std::int64_t kFirstDay = -657'434;           // 1 January 100
constexpr std::int64_t kLastDay = 2'958'465;           // 31 December 9999

std::int64_t FloorDiv(std::int64_t value, std::int64_t divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

// Days since 30 December 1899 of a day in the proleptic Gregorian calendar. Years are counted from March
// here, so that the leap day is the last of its year and months have fixed starts.
std::int64_t DayNumber(std::int64_t year, std::int64_t month, std::int64_t day) {
  const std::int64_t march_year = month > 2 ? year : year - 1;
  const std::int64_t march_month = month > 2 ? month - 3 : month + 9;
  const std::int64_t era = FloorDiv(march_year, 400);
  const std::int64_t year_of_era = march_year - era * 400;
  const std::int64_t day_of_year = (153 * march_month + 2) / 5 + day - 1;
  const std::int64_t day_of_era = year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  constexpr std::int64_t kDaysPerEra = 146'097;
  constexpr std::int64_t kDaysFromYearZeroTo1970 = 719'468;
  return era * kDaysPerEra + day_of_era - kDaysFromYearZeroTo1970 + kDaysFromEpochTo1970;
}

// The inverse: year, month and day of a day number.
CivilTime CivilDay(std::int64_t day_number) {
  const std::int64_t shifted = day_number - kDaysFromEpochTo1970 + 719'468;
  const std::int64_t era = FloorDiv(shifted, 146'097);
  const std::int64_t day_of_era = shifted - era * 146'097;
  const std::int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36'524 - day_of_era / 146'096) / 365;
  const std::int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t march_month = (5 * day_of_year + 2) / 153;

  CivilTime civil;
  civil.day = static_cast<int>(day_of_year - (153 * march_month + 2) / 5 + 1);
  civil.month = static_cast<int>(march_month < 10 ? march_month + 3 : march_month - 9);
  civil.year = static_cast<int>(year_of_era + era * 400 + (civil.month <= 2 ? 1 : 0));
  return civil;
}

// Seconds since 30 December 1899, 00:00, a line without the fold that the serial number has below that day.
std::int64_t ToSeconds(Date date) {
  const double day = std::trunc(date.serial);
  if (!(day >= kFirstDay && day <= kLastDay)) throw Errors::InvalidProcedureCall();
  const double fraction = std::fabs(date.serial - day);
  return static_cast<std::int64_t>(day) * kSecondsPerDay + std::llround(fraction * kSecondsPerDay);
}

Date FromSeconds(std::int64_t seconds) {
  const std::int64_t day = FloorDiv(seconds, kSecondsPerDay);
  if (day < kFirstDay || day > kLastDay) throw Errors::InvalidProcedureCall();
  const double fraction = static_cast<double>(seconds - day * kSecondsPerDay) / kSecondsPerDay;
  const auto whole = static_cast<double>(day);
  return {day < 0 ? whole - fraction : whole + fraction};
}

}  // namespace

Date ToDate(const CivilTime& civil) {
  const std::int64_t months = std::int64_t{civil.year} * 12 + civil.month - 1;
  const std::int64_t year = FloorDiv(months, 12);
  const std::int64_t day = DayNumber(year, months - year * 12 + 1, civil.day);
  const std::int64_t second_of_day = (std::int64_t{civil.hour} * 60 + civil.minute) * 60 + civil.second;
  return FromSeconds(day * kSecondsPerDay + second_of_day);
}

CivilTime ToCivil(Date date) {
  const std::int64_t seconds = ToSeconds(date);
  const std::int64_t day = FloorDiv(seconds, kSecondsPerDay);
  const auto second_of_day = static_cast<int>(seconds - day * kSecondsPerDay);
  CivilTime civil = CivilDay(day);
  civil.hour = second_of_day / 3600;
  civil.minute = second_of_day / 60 % 60;
  civil.second = second_of_day % 60;
  return civil;
}

int DaysInMonth(int year, int month) {
  return static_cast<int>(DayNumber(year, month + 1, 1) - DayNumber(year, month, 1));
}

int WeekdayOf(Date date) {
  const std::int64_t day = FloorDiv(ToSeconds(date), kSecondsPerDay);
  return static_cast<int>(day + 6 - FloorDiv(day + 6, 7) * 7) + 1;  // day 0 was a Saturday
}

int DayOfYear(Date date) {
  const CivilTime civil = ToCivil(date);
  return static_cast<int>(DayNumber(civil.year, civil.month, civil.day) - DayNumber(civil.year, 1, 1)) + 1;
}

Date AddMinutes(Date date, std::int32_t minutes) {
  return FromSeconds(ToSeconds(date) + std::int64_t{minutes} * 60);
}

Date AddHours(Date date, std::int32_t hours) {
  return FromSeconds(ToSeconds(date) + std::int64_t{hours} * 3600);
}

}  // namespace mirelo
