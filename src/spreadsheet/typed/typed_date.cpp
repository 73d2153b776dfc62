#include <charconv>
#include <cstddef>
#include <optional>
#include <string>

#include "automation/date.h"
#include "automation/text.h"
#include "spreadsheet/calendar.h"
#include "spreadsheet/typed/typed_text.h"

namespace mirelo::spreadsheet {

namespace {

constexpr std::size_t kLongestDate = 64;  // longer text is not looked at

constexpr bool IsDateDigit(char c) { return '0' <= c && c <= '9'; }
constexpr bool IsDateLetter(char c) {
  return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z') || (c & 0x80) != 0;
}

// Reads from the start of a text and remembers nothing but what is left.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : left_(text) {}

  bool AtEnd() const { return left_.empty(); }
  void SkipBlanks() { left_ = LTrim(left_); }

  bool Take(std::string_view what) {
    if (what.empty() || !left_.starts_with(what)) return false;
    left_.remove_prefix(what.size());
    return true;
  }

  // One to `most` digits with no further digit behind them.
  std::optional<int> TakeNumber(std::size_t most) {
    std::size_t count = 0;
    while (count < left_.size() && IsDateDigit(left_[count])) ++count;
    if (count == 0 || count > most) return std::nullopt;
    int number = 0;
    std::from_chars(left_.data(), left_.data() + count, number);
    left_.remove_prefix(count);
    digits_ = count;
    return number;
  }
  std::size_t Digits() const { return digits_; }  // of the number taken last

  std::string_view TakeWord() {
    std::size_t count = 0;
    while (count < left_.size() && IsDateLetter(left_[count])) ++count;
    const std::string_view word = left_.substr(0, count);
    left_.remove_prefix(count);
    return word;
  }

 private:
  std::string_view left_;
  std::size_t digits_ = 0;
};

struct Day {
  int year = 0;
  int month = 0;
  int day = 0;
  bool named_month = false;
};

struct Time {
  int hour = 0;
  int minute = 0;
  int second = 0;
  bool has_seconds = false;
  bool has_half = false;  // AM or PM
};

bool Exists(const Day& day) {
  if (day.year < 1900 || day.year > 9999 || day.month < 1 || day.month > 12 || day.day < 1) return false;
  const bool is_false_day = day.year == 1900 && day.month == 2 && day.day == 29;
  return is_false_day || day.day <= DaysInMonth(day.year, day.month);
}

std::optional<int> TakeYear(Scanner& scanner) {
  const auto number = scanner.TakeNumber(4);
  if (!number || scanner.Digits() == 3 || scanner.Digits() == 1) return std::nullopt;
  if (scanner.Digits() == 4) return number;
  return *number < 30 ? *number + 2000 : *number + 1900;
}

int MonthNamed(std::string_view word, const RegionalFormat& regional) {
  for (std::size_t i = 0; i < regional.months.size(); ++i) {
    if (EqualText(word, regional.months[i]) || EqualText(word, regional.short_months[i])) {
      return static_cast<int>(i) + 1;
    }
  }
  return 0;
}

std::string TakeSeparator(Scanner& scanner, const RegionalFormat& regional) {
  for (const std::string_view separator : {std::string_view(regional.date_separator), std::string_view("/"),
                                           std::string_view("-"), std::string_view(" ")}) {
    if (scanner.Take(separator)) return std::string(separator);
  }
  return "";
}

// "Jan 20, 2011"
std::optional<Day> TakeMonthFirst(Scanner& scanner, const RegionalFormat& regional) {
  Day day{.named_month = true};
  day.month = MonthNamed(scanner.TakeWord(), regional);
  if (day.month == 0) return std::nullopt;
  scanner.SkipBlanks();
  const auto number = scanner.TakeNumber(2);
  if (!number || !scanner.Take(",")) return std::nullopt;
  day.day = *number;
  scanner.SkipBlanks();
  const auto year = TakeYear(scanner);
  if (!year) return std::nullopt;
  day.year = *year;
  return day;
}

// "20-Jan-2011", behind the first separator.
std::optional<Day> TakeNamedMonth(Scanner& scanner, int number, std::string_view separator,
                                  const RegionalFormat& regional) {
  Day day{.day = number, .named_month = true};
  day.month = MonthNamed(scanner.TakeWord(), regional);
  if (day.month == 0 || !scanner.Take(separator)) return std::nullopt;
  const auto year = TakeYear(scanner);
  if (!year) return std::nullopt;
  day.year = *year;
  return day;
}

// "1/20/2011" and "2011-01-20", behind the first separator.
std::optional<Day> TakeNumbers(Scanner& scanner, int first, bool year_first, std::string_view separator,
                               const RegionalFormat& regional) {
  const auto second = scanner.TakeNumber(2);
  if (!second || !scanner.Take(separator)) return std::nullopt;
  if (year_first) {
    const auto third = scanner.TakeNumber(2);
    if (!third) return std::nullopt;
    return Day{.year = first, .month = *second, .day = *third};
  }
  const auto year = TakeYear(scanner);
  if (!year) return std::nullopt;
  if (regional.date_order == RegionalFormat::DateOrder::DayMonthYear) {
    return Day{.year = *year, .month = *second, .day = first};
  }
  return Day{.year = *year, .month = first, .day = *second};
}

std::optional<Day> TakeDay(Scanner& scanner, const RegionalFormat& regional) {
  const auto first = scanner.TakeNumber(4);
  if (!first) return TakeMonthFirst(scanner, regional);
  const bool year_first = scanner.Digits() == 4;
  if (scanner.Digits() == 3) return std::nullopt;
  const std::string separator = TakeSeparator(scanner, regional);
  if (separator.empty()) return std::nullopt;

  Scanner look_ahead = scanner;
  if (!year_first && !look_ahead.TakeWord().empty())
    return TakeNamedMonth(scanner, *first, separator, regional);
  if (separator == " ") return std::nullopt;
  return TakeNumbers(scanner, *first, year_first, separator, regional);
}

// AM or PM, if it is there. False when it does not go with the hour.
bool TakeHalf(Scanner& scanner, Time& time) {
  scanner.SkipBlanks();
  const std::string_view word = scanner.TakeWord();
  if (word.empty()) return true;
  const bool is_pm = EqualText(word, "PM") || EqualText(word, "P");
  if (!is_pm && !EqualText(word, "AM") && !EqualText(word, "A")) return false;
  if (time.hour < 1 || time.hour > 12) return false;
  time.hour = time.hour % 12 + (is_pm ? 12 : 0);
  time.has_half = true;
  return true;
}

std::optional<Time> TakeTime(Scanner& scanner) {
  Time time;
  const auto hour = scanner.TakeNumber(2);
  if (!hour || *hour > 23 || !scanner.Take(":")) return std::nullopt;
  const auto minute = scanner.TakeNumber(2);
  if (!minute || *minute > 59) return std::nullopt;
  time.hour = *hour;
  time.minute = *minute;
  if (scanner.Take(":")) {
    const auto second = scanner.TakeNumber(2);
    if (!second || *second > 59) return std::nullopt;
    time.second = *second;
    time.has_seconds = true;
  }
  if (!TakeHalf(scanner, time)) return std::nullopt;
  return time;
}

std::string_view FormatOf(const std::optional<Day>& day, const std::optional<Time>& time) {
  if (day && time) return "m/d/yyyy h:mm";
  if (day) return day->named_month ? "d-mmm-yy" : "m/d/yyyy";
  if (time->has_half) return time->has_seconds ? "h:mm:ss AM/PM" : "h:mm AM/PM";
  return time->has_seconds ? "h:mm:ss" : "h:mm";
}

double TypedSerial(const std::optional<Day>& day, const std::optional<Time>& time) {
  const Time at = time.value_or(Time{});
  if (!day) return (at.hour * 3600 + at.minute * 60 + at.second) / double{kSecondsPerDay};
  return SerialOf(CivilTime{day->year, day->month, day->day, at.hour, at.minute, at.second});
}

}  // namespace

std::optional<TypedValue> TypedDate(std::string_view text, const RegionalFormat& regional) {
  if (text.size() > kLongestDate) return std::nullopt;

  Scanner scanner(text);
  auto time = TakeTime(scanner);
  std::optional<Day> day;
  if (!time) {
    scanner = Scanner(text);
    day = TakeDay(scanner, regional);
    if (!day || !Exists(*day)) return std::nullopt;
    if (scanner.Take(" ")) {
      scanner.SkipBlanks();
      time = TakeTime(scanner);
      if (!time) return std::nullopt;
    }
  }
  if (!scanner.AtEnd()) return std::nullopt;
  return TypedValue{CellValue(TypedSerial(day, time)), FormatOf(day, time)};
}

}  // namespace mirelo::spreadsheet
