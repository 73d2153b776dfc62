#include "adapters/headless/locale_format.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <vector>

#include "automation/text.h"

namespace mirelo::headless {

namespace {

// A stretch of a format: letters of Format(), or literal text.
struct Piece {
  bool literal = false;
  std::string text;
};
using Pieces = std::vector<Piece>;

struct Translation {
  char conversion;
  std::string_view text;
};

constexpr Translation kLetters[] = {
    {'d', "dd"},   {'e', "d"},   {'m', "mm"},   {'b', "mmm"},  {'h', "mmm"},  {'B', "mmmm"}, {'y', "yy"},
    {'Y', "yyyy"}, {'a', "ddd"}, {'A', "dddd"}, {'j', "y"},    {'H', "hh"},   {'k', "h"},    {'I', "hh"},
    {'l', "h"},    {'M', "nn"},  {'S', "ss"},   {'p', "AMPM"}, {'P', "AMPM"},
};

// Conversions that stand for several others.
constexpr Translation kShorthands[] = {
    {'T', "%H:%M:%S"}, {'R', "%H:%M"}, {'D', "%m/%d/%y"}, {'F', "%Y-%m-%d"}, {'r', "%I:%M:%S %p"},
};

template <std::size_t kSize>
std::string_view Find(const Translation (&table)[kSize], char conversion) {
  const auto* found = std::find_if(std::begin(table), std::end(table),
                                   [=](const Translation& t) { return t.conversion == conversion; });
  return found == std::end(table) ? std::string_view() : found->text;
}

void AppendLiteral(Pieces& pieces, char c) {
  if (pieces.empty() || !pieces.back().literal) pieces.push_back({true, {}});
  pieces.back().text += c;
}

// Cuts a strftime format. Conversions that Format() has nothing for, such as time zones, are left out.
Pieces Cut(std::string_view format) {
  Pieces pieces;
  while (!format.empty()) {
    const char first = format.front();
    format.remove_prefix(1);
    if (first != '%') {
      AppendLiteral(pieces, first);
      continue;
    }
    bool padded = true;
    for (; !format.empty() && std::string_view("-_0^#EO").find(format.front()) != std::string_view::npos;
         format.remove_prefix(1)) {
      if (format.front() == '-') padded = false;
    }
    if (format.empty()) break;
    const char conversion = format.front();
    format.remove_prefix(1);

    if (conversion == '%') AppendLiteral(pieces, '%');
    if (conversion == 'n' || conversion == 't') AppendLiteral(pieces, ' ');
    for (Piece& piece : Cut(Find(kShorthands, conversion))) pieces.push_back(std::move(piece));
    std::string_view letters = Find(kLetters, conversion);
    if (!padded && letters.size() == 2) letters.remove_suffix(1);
    if (!letters.empty()) pieces.push_back({false, std::string(letters)});
  }
  if (!pieces.empty() && pieces.back().literal && Trim(pieces.back().text).empty()) pieces.pop_back();
  return pieces;
}

// The first punctuation between two fields. Words there, such as the signs for year and month in East Asia,
// belong to their fields and separate nothing elsewhere.
std::string SeparatorOf(const Pieces& pieces, std::string_view otherwise) {
  const auto is_punctuation = [](char c) {
    const bool letter_or_digit = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    return static_cast<unsigned char>(c) < 0x80 && !letter_or_digit;
  };
  for (std::size_t i = 1; i + 1 < pieces.size(); ++i) {
    const std::string& text = pieces[i].text;
    const bool visible = !Trim(text).empty();
    if (pieces[i].literal && visible && std::all_of(text.begin(), text.end(), is_punctuation)) return text;
  }
  return std::string(otherwise);
}

// A pattern of Format(), in which `mark` ("/" or ":") stands for the separator.
std::string Pattern(const Pieces& pieces, std::string_view separator, char mark) {
  std::string pattern;
  for (const Piece& piece : pieces) {
    if (!piece.literal) {
      pattern += piece.text;
    } else if (piece.text == separator) {
      pattern += mark;
    } else {
      for (const char c : piece.text) {
        if (static_cast<unsigned char>(c) < 0x80 && c != ' ') pattern += '\\';
        pattern += c;
      }
    }
  }
  return pattern;
}

std::size_t PlaceOf(const Pieces& pieces, char field) {
  const auto found = std::find_if(pieces.begin(), pieces.end(), [=](const Piece& piece) {
    const bool weekday = piece.text.starts_with("ddd");
    return !piece.literal && !weekday && piece.text.front() == field;
  });
  return static_cast<std::size_t>(found - pieces.begin());
}

RegionalFormat::DateOrder OrderOf(const Pieces& date) {
  const std::size_t year = PlaceOf(date, 'y');
  const std::size_t month = PlaceOf(date, 'm');
  const std::size_t day = PlaceOf(date, 'd');
  if (year < month && year < day) return RegionalFormat::DateOrder::YearMonthDay;
  return day < month ? RegionalFormat::DateOrder::DayMonthYear : RegionalFormat::DateOrder::MonthDayYear;
}

std::string LongDate(RegionalFormat::DateOrder order) {
  switch (order) {
    case RegionalFormat::DateOrder::DayMonthYear:
      return "dddd, d mmmm yyyy";
    case RegionalFormat::DateOrder::YearMonthDay:
      return "yyyy mmmm d, dddd";
    case RegionalFormat::DateOrder::MonthDayYear:
      break;
  }
  return "dddd, mmmm d, yyyy";
}

// The time without its seconds and what stands in front of them.
Pieces WithoutSeconds(Pieces time) {
  const std::size_t seconds = PlaceOf(time, 's');
  if (seconds == time.size()) return time;
  const bool literal_before = seconds > 0 && time[seconds - 1].literal;
  const auto at = time.begin() + static_cast<std::ptrdiff_t>(seconds);
  time.erase(at - (literal_before ? 1 : 0), at + 1);
  return time;
}

// Lists of months are padded with blanks in some locales.
template <std::size_t kSize>
std::array<std::string, kSize> Trimmed(std::array<std::string, kSize> names) {
  for (std::string& name : names) name = std::string(Trim(name));
  return names;
}

}  // namespace

RegionalFormat ToRegionalFormat(const LocaleTexts& texts) {
  const Pieces date = Cut(texts.date_format);
  const bool twelve_hours = texts.time_format == "%r" && !texts.twelve_hour_format.empty();
  const Pieces time = Cut(twelve_hours ? texts.twelve_hour_format : texts.time_format);

  RegionalFormat format;
  format.date_order = OrderOf(date);
  format.date_separator = SeparatorOf(date, "/");
  format.time_separator = SeparatorOf(time, ":");
  format.decimal_separator = texts.decimal_separator;
  format.group_separator = texts.group_separator;
  format.short_date = Pattern(date, format.date_separator, '/');
  format.long_date = LongDate(format.date_order);
  format.short_time = Pattern(WithoutSeconds(time), format.time_separator, ':');
  format.long_time = Pattern(time, format.time_separator, ':');
  format.am = texts.am;
  format.pm = texts.pm;
  format.months = Trimmed(texts.months);
  format.short_months = Trimmed(texts.short_months);
  format.weekdays = Trimmed(texts.weekdays);
  format.short_weekdays = Trimmed(texts.short_weekdays);
  return format;
}

}  // namespace mirelo::headless
