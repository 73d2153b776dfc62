#include "adapters/windows/system.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "adapters/windows/user_format.h"
#include "automation/wide_text.h"

namespace mirelo::windows {

namespace {

class Place {
 public:
  explicit Place(const wchar_t* name) : name_(name) {}

  // Leaves `text` as it is where Windows does not know.
  void Tell(LCTYPE what, std::string& text) const {
    std::array<wchar_t, 128> told{};
    const int length = ::GetLocaleInfoEx(name_, what, told.data(), static_cast<int>(told.size()));
    if (length > 1) text = NarrowText({told.data(), static_cast<std::size_t>(length - 1)});
  }
  template <std::size_t N>
  void TellEach(LCTYPE first, std::array<std::string, N>& texts) const {
    for (std::size_t i = 0; i < N; ++i) Tell(first + static_cast<LCTYPE>(i), texts[i]);
  }

 private:
  const wchar_t* name_;
};

// A pattern of Windows in the letters of Format(): months are small, either kind of hours too, and the half
// of the day, for which Format() writes `mark`, says which they are; a half of one letter is written in full.
// What stands in quotes stays; two of them within are one that is meant.
std::string Pattern(std::string_view windows, std::string_view mark) {
  std::string pattern;
  bool is_quoted = false;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    const char letter = windows[i];
    if (is_quoted && windows.substr(i).starts_with("''")) {
      ++i;
      pattern += '\'';
    } else if (letter == '\'') {
      is_quoted = !is_quoted;
      pattern += '"';
    } else if (!is_quoted && letter == 't') {
      if (i == 0 || windows[i - 1] != 't') pattern += mark;
    } else if (!is_quoted && (letter == 'M' || letter == 'H')) {
      pattern += letter == 'M' ? 'm' : 'h';
    } else {
      pattern += letter;
    }
  }
  return pattern;
}

void TellPattern(const Place& place, LCTYPE what, std::string_view mark, std::string& pattern) {
  std::string told;
  place.Tell(what, told);
  if (!told.empty()) pattern = Pattern(told, mark);
}

// By what stands first in the short date; "yyyy-MM-dd" begins with the year.
RegionalFormat::DateOrder OrderOf(std::string_view short_date) {
  switch (short_date.empty() ? 'm' : short_date.front()) {
    case 'd':
      return RegionalFormat::DateOrder::DayMonthYear;
    case 'y':
      return RegionalFormat::DateOrder::YearMonthDay;
    default:
      return RegionalFormat::DateOrder::MonthDayYear;
  }
}

// Windows begins with Monday, we with Sunday.
template <class Names>
void TellWeekdays(const Place& place, LCTYPE monday, Names& names) {
  for (std::size_t day = 0; day < names.size(); ++day) {
    place.Tell(monday + static_cast<LCTYPE>((day + 6) % 7), names[day]);
  }
}

}  // namespace

RegionalFormat UserFormat(const wchar_t* name) {
  const Place place(name);
  RegionalFormat format;
  place.Tell(LOCALE_SDECIMAL, format.decimal_separator);
  place.Tell(LOCALE_STHOUSAND, format.group_separator);
  place.Tell(LOCALE_SDATE, format.date_separator);
  place.Tell(LOCALE_STIME, format.time_separator);
  place.Tell(LOCALE_S1159, format.am);
  place.Tell(LOCALE_S2359, format.pm);
  const std::string_view mark = format.am == "AM" && format.pm == "PM" ? "AM/PM" : "AMPM";
  TellPattern(place, LOCALE_SSHORTDATE, mark, format.short_date);
  TellPattern(place, LOCALE_SLONGDATE, mark, format.long_date);
  TellPattern(place, LOCALE_SSHORTTIME, mark, format.short_time);
  TellPattern(place, LOCALE_STIMEFORMAT, mark, format.long_time);
  place.TellEach(LOCALE_SMONTHNAME1, format.months);
  place.TellEach(LOCALE_SABBREVMONTHNAME1, format.short_months);
  TellWeekdays(place, LOCALE_SDAYNAME1, format.weekdays);
  TellWeekdays(place, LOCALE_SABBREVDAYNAME1, format.short_weekdays);
  format.date_order = OrderOf(format.short_date);
  return format;
}

}  // namespace mirelo::windows
