#pragma once

#include <compare>
#include <cstdint>

namespace mirelo {

// A moment as automation counts it: days since 30 December 1899, the time of day as the fraction. Local time,
// no zone. Before that day the fraction still counts forward from midnight (-1.25 is 29 December, 06:00).
struct Date {
  double serial = 0;
  friend auto operator<=>(const Date&, const Date&) = default;
};

// A date taken apart. month 1 to 12, day 1 to 31, weekday 1 (Sunday) to 7, day_of_year 1 to 366, second 0
// to 59.
struct CivilTime {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
  friend bool operator==(const CivilTime&, const CivilTime&) = default;
};

// The date of a civil time. Fields out of their range carry over, as month 13 is January of the next year.
// Raises error 5 for a year outside 100 to 9999.
Date ToDate(const CivilTime& civil);

// Takes a date apart, rounded to the nearest second. Here and below, a serial number outside the years 100 to
// 9999 is error 5.
CivilTime ToCivil(Date date);

inline constexpr std::int32_t kSecondsPerDay = 86'400;

// Of a month from 1 to 12.
int DaysInMonth(int year, int month);

int WeekdayOf(Date date);  // 1 Sunday to 7 Saturday
int DayOfYear(Date date);  // 1 to 366

// The moment so much later, or earlier for a negative number, to the second.
Date AddMinutes(Date date, std::int32_t minutes);
Date AddHours(Date date, std::int32_t hours);

}  // namespace mirelo
