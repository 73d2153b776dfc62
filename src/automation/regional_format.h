#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "automation/date.h"

namespace mirelo {

// How dates, times and numbers are written and read at this place. A plain value: the host hands out the
// user's, tests make their own.
struct RegionalFormat {
  enum class DateOrder { MonthDayYear, DayMonthYear, YearMonthDay };

  DateOrder date_order = DateOrder::MonthDayYear;
  std::string date_separator = "/";
  std::string time_separator = ":";
  std::string decimal_separator = ".";
  std::string group_separator = ",";
  // Patterns in the letters of Format().
  std::string short_date = "m/d/yyyy";
  std::string long_date = "dddd, mmmm d, yyyy";
  std::string short_time = "h:mm AM/PM";
  std::string long_time = "h:mm:ss AM/PM";
  std::string am = "AM";
  std::string pm = "PM";
  std::array<std::string, 12> months{"January", "February", "March",     "April",   "May",      "June",
                                     "July",    "August",   "September", "October", "November", "December"};
  std::array<std::string, 12> short_months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                           "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::array<std::string, 7> weekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                      "Thursday", "Friday", "Saturday"};
  std::array<std::string, 7> short_weekdays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

  // The fixed format that is used unless the user's environment says otherwise: that of the United States.
  static const RegionalFormat& Standard();
};

std::string ShortDate(Date date, const RegionalFormat& format);
std::string LongTime(Date date, const RegionalFormat& format);

// The general form: short date, a blank, long time; the date alone at midnight, the time alone on day 0.
std::string GeneralDate(Date date, const RegionalFormat& format);

// Reads a date, a time or both from text in the forms that people write ("1/20/2011 8:36:13 AM", "20 Jan
// 2011", "2011-01-20", "09:30"). A date part that cannot be meant in the regional order is tried in the other
// orders ("20/1/2011" is 20 January everywhere); English names of months are read in every region; a day
// without a year is no date, since this function knows no today. Two-digit years: 0 to 29 are 2000 on, 30 to
// 99 are 1900 on. Nothing when the whole text is not a date.
std::optional<Date> ParseDate(std::string_view text, const RegionalFormat& format);

// The same for text whose author's order is known: `order` takes the regional one's place.
std::optional<Date> ParseDate(std::string_view text, const RegionalFormat& format,
                              RegionalFormat::DateOrder order);

}  // namespace mirelo
