#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "automation/date.h"
#include "automation/regional_format.h"
#include "automation/text.h"
#include "spreadsheet/calendar.h"
#include "spreadsheet/display/displayed_text.h"
#include "spreadsheet/format_code.h"

namespace mirelo::spreadsheet {

namespace {

constexpr std::string_view kNoDate = "########";

// An item of a date format: a run of one letter in lower case, an AM/PM mark, a run in brackets, decimals of
// the second, or text.
struct DateItem {
  char letter = 0;  // d m y h s; n minutes; a the mark; . decimals; 0 text
  std::size_t length = 0;
  bool elapsed = false;
  std::string text;
};

constexpr char Lower(char c) { return 'A' <= c && c <= 'Z' ? static_cast<char>(c + 32) : c; }

DateItem ReadLiteral(std::string_view literal) {
  if (literal.front() == '[') {
    const char letter = Lower(literal[1]);
    if (letter == 'h' || letter == 'm' || letter == 's') {
      return {letter == 'm' ? 'n' : letter, literal.size() - 2, true, ""};
    }
    return {};
  }
  if (literal.front() == '"') return {0, 0, false, std::string(literal.substr(1, literal.size() - 2))};
  if (literal.front() == '\\') return {0, 0, false, std::string(literal.substr(1))};
  return {0, 0, false, literal.front() == '_' ? " " : ""};
}

// Reads one item at the start of `code`; its length.
std::size_t ReadItem(std::vector<DateItem>& items, std::string_view code) {
  const std::size_t literal = LiteralLength(code);
  if (literal == std::string_view::npos) return code.size();
  if (literal > 0) {
    items.push_back(ReadLiteral(code.substr(0, literal)));
    return literal;
  }
  for (const std::string_view mark : {std::string_view("AM/PM"), std::string_view("A/P")}) {
    if (!EqualText(code.substr(0, mark.size()), mark)) continue;
    items.push_back({'a', mark.size(), false, ""});
    return mark.size();
  }
  const char letter = Lower(code.front());
  if (std::string_view("dmyhs").find(letter) != std::string_view::npos) {
    std::size_t length = 1;
    while (length < code.size() && Lower(code[length]) == letter) ++length;
    items.push_back({letter, length, false, ""});
    return length;
  }
  if (letter == '.' && code.size() > 1 && code[1] == '0') {
    const std::size_t end = code.find_first_not_of('0', 1);
    const std::size_t length = end == std::string_view::npos ? code.size() : end;
    items.push_back({'.', length - 1, false, ""});
    return length;
  }
  items.push_back({0, 0, false, std::string(1, code.front())});
  return 1;
}

// "m" is minutes right behind hours and right before seconds, text between them aside.
void TellMinutesFromMonths(std::vector<DateItem>& items) {
  DateItem* previous = nullptr;
  for (DateItem& item : items) {
    if (item.letter == 0 || item.letter == '.') continue;
    if (item.letter == 'm' && previous != nullptr && previous->letter == 'h') item.letter = 'n';
    if (item.letter == 's' && previous != nullptr && previous->letter == 'm') previous->letter = 'n';
    previous = &item;
  }
}

std::string Padded(std::int64_t number, std::size_t length) {
  std::string text = std::to_string(number);
  if (text.size() < length) text.insert(0, length - text.size(), '0');
  return text;
}

std::string DayText(const SheetTime& time, std::size_t length) {
  const RegionalFormat& regional = RegionalFormat::Standard();
  const auto weekday = static_cast<std::size_t>(time.weekday - 1);
  if (length <= 2) return Padded(time.civil.day, length);
  return length == 3 ? regional.short_weekdays[weekday] : regional.weekdays[weekday];
}

std::string MonthText(const SheetTime& time, std::size_t length) {
  const RegionalFormat& regional = RegionalFormat::Standard();
  const auto month = static_cast<std::size_t>(time.civil.month - 1);
  if (length <= 2) return Padded(time.civil.month, length);
  if (length == 3) return regional.short_months[month];
  return length == 5 ? regional.months[month].substr(0, 1) : regional.months[month];
}

std::string YearText(const SheetTime& time, std::size_t length) {
  return length <= 2 ? Padded(time.civil.year % 100, 2) : Padded(time.civil.year, 4);
}

std::string HourText(const SheetTime& time, std::size_t length, bool has_mark) {
  if (!has_mark) return Padded(time.civil.hour, length);
  return Padded(time.civil.hour % 12 == 0 ? 12 : time.civil.hour % 12, length);
}

std::string MarkText(const SheetTime& time, std::size_t length) {
  const bool is_short = length == 3;
  if (time.civil.hour < 12) return is_short ? "A" : "AM";
  return is_short ? "P" : "PM";
}

std::string ElapsedText(char letter, std::size_t length, std::int64_t seconds) {
  const std::int64_t unit = letter == 'h' ? 3600 : letter == 'n' ? 60 : 1;
  return Padded(seconds / unit, length);
}

}  // namespace

std::string DateInSection(double serial, std::string_view section) {
  if (serial < 0 || serial >= kLastDay + 1) return std::string(kNoDate);

  std::vector<DateItem> items;
  std::size_t decimals = 0;
  bool has_mark = false;
  while (!section.empty()) section.remove_prefix(ReadItem(items, section));
  TellMinutesFromMonths(items);
  for (const DateItem& item : items) {
    if (item.letter == '.') decimals = std::min<std::size_t>(item.length, 3);
    has_mark = has_mark || item.letter == 'a';
  }

  // Rounded to what is shown, so that no second shows as 60.
  constexpr std::array<std::int64_t, 4> kParts{1, 10, 100, 1000};
  const std::int64_t parts = kParts[decimals];
  const std::int64_t moment = std::llround(serial * kSecondsPerDay * static_cast<double>(parts));
  const std::int64_t seconds = moment / parts;
  if (seconds >= std::int64_t{kLastDay + 1} * kSecondsPerDay) return std::string(kNoDate);
  const SheetTime time = TimeOfSerial(static_cast<double>(seconds) / kSecondsPerDay);

  std::string text;
  for (const DateItem& item : items) {
    if (item.elapsed) {
      text += ElapsedText(item.letter, item.length, seconds);
      continue;
    }
    switch (item.letter) {
      case 'd':
        text += DayText(time, item.length);
        break;
      case 'm':
        text += MonthText(time, item.length);
        break;
      case 'y':
        text += YearText(time, item.length);
        break;
      case 'h':
        text += HourText(time, item.length, has_mark);
        break;
      case 'n':
        text += Padded(time.civil.minute, item.length);
        break;
      case 's':
        text += Padded(time.civil.second, item.length);
        break;
      case 'a':
        text += MarkText(time, item.length);
        break;
      case '.':
        text += '.';
        text += Padded(moment % parts, decimals);
        break;
      default:
        text += item.text;
    }
  }
  return text;
}

}  // namespace mirelo::spreadsheet
