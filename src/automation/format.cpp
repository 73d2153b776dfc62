#include "automation/format.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "automation/text.h"

namespace mirelo {

namespace {

// What a stretch of a format stands for.
enum class FormatPart {
  Literal,
  Day,
  DayTwo,
  WeekdayShort,
  WeekdayLong,
  DateShort,
  DateLong,
  WeekdayNumber,
  WeekOfYear,
  Month,
  MonthTwo,
  MonthShort,
  MonthLong,
  Quarter,
  DayOfYear,
  YearTwo,
  YearFour,
  Hour,
  HourTwo,
  Minute,
  MinuteTwo,
  Second,
  SecondTwo,
  General,
  TimeLong,
  UpperMark,
  LowerMark,
  UpperLetterMark,
  LowerLetterMark,
  RegionalMark,
  DateSeparator,
  TimeSeparator,
};

struct Code {
  std::string_view spelling;
  FormatPart kind;
};

// Codes of which one begins with another stand longest first.
constexpr Code kLetterCodes[] = {
    {"dddddd", FormatPart::DateLong},  {"ddddd", FormatPart::DateShort}, {"dddd", FormatPart::WeekdayLong},
    {"ddd", FormatPart::WeekdayShort}, {"dd", FormatPart::DayTwo},       {"d", FormatPart::Day},
    {"mmmm", FormatPart::MonthLong},   {"mmm", FormatPart::MonthShort},  {"mm", FormatPart::MonthTwo},
    {"m", FormatPart::Month},          {"yyyy", FormatPart::YearFour},   {"yy", FormatPart::YearTwo},
    {"y", FormatPart::DayOfYear},      {"hh", FormatPart::HourTwo},      {"h", FormatPart::Hour},
    {"nn", FormatPart::MinuteTwo},     {"n", FormatPart::Minute},        {"ss", FormatPart::SecondTwo},
    {"s", FormatPart::Second},         {"ww", FormatPart::WeekOfYear},   {"w", FormatPart::WeekdayNumber},
    {"q", FormatPart::Quarter},        {"c", FormatPart::General},       {"ttttt", FormatPart::TimeLong},
    {"/", FormatPart::DateSeparator},  {":", FormatPart::TimeSeparator},
};

// Their case says how the mark is written, so it counts.
constexpr Code kMarkCodes[] = {
    {"AM/PM", FormatPart::UpperMark},     {"am/pm", FormatPart::LowerMark},
    {"A/P", FormatPart::UpperLetterMark}, {"a/p", FormatPart::LowerLetterMark},
    {"AMPM", FormatPart::RegionalMark},
};

// Whole formats that have a name.
struct NamedFormat {
  std::string_view name;
  std::string_view format;
};
constexpr NamedFormat kNamedFormats[] = {
    {"General Date", "c"},   {"Long Date", "dddddd"}, {"Medium Date", "dd-mmm-yy"},
    {"Short Date", "ddddd"}, {"Long Time", "ttttt"},  {"Medium Time", "hh:nn AM/PM"},
    {"Short Time", "hh:nn"},
};

std::string_view ResolveName(std::string_view format) {
  for (const NamedFormat& named : kNamedFormats) {
    if (EqualText(format, named.name)) return named.format;
  }
  return format;
}

struct FormatToken {
  FormatPart kind;
  std::string_view text;  // of a literal
};

bool IsMark(FormatPart kind) { return kind >= FormatPart::UpperMark && kind <= FormatPart::RegionalMark; }
bool IsHour(FormatPart kind) { return kind == FormatPart::Hour || kind == FormatPart::HourTwo; }
bool IsSecond(FormatPart kind) { return kind == FormatPart::Second || kind == FormatPart::SecondTwo; }
bool IsPlain(FormatPart kind) {
  return kind == FormatPart::Literal || kind == FormatPart::DateSeparator ||
         kind == FormatPart::TimeSeparator;
}

bool StartsIgnoringCase(std::string_view text, std::string_view lower) {
  return text.size() >= lower.size() && EqualText(text.substr(0, lower.size()), lower);
}

// Takes the next token from the front of the format.
FormatToken TakeToken(std::string_view& format) {
  const auto take = [&](std::size_t count) {
    const std::string_view taken = format.substr(0, count);
    format.remove_prefix(taken.size());
    return taken;
  };
  for (const Code& code : kMarkCodes) {
    if (format.starts_with(code.spelling)) return {code.kind, take(code.spelling.size())};
  }
  for (const Code& code : kLetterCodes) {
    if (StartsIgnoringCase(format, code.spelling)) return {code.kind, take(code.spelling.size())};
  }
  if (format.front() == '\\' && format.size() > 1) {
    format.remove_prefix(1);
    return {FormatPart::Literal, take(Left(format, 1).size())};
  }
  if (format.front() == '"') {
    format.remove_prefix(1);
    const FormatToken quoted{FormatPart::Literal, take(format.find('"'))};
    take(1);
    return quoted;
  }
  return {FormatPart::Literal, take(1)};
}

// An m next to hours in front or seconds behind means minutes.
void TurnMonthsIntoMinutes(std::vector<FormatToken>& tokens) {
  FormatPart before = FormatPart::Literal;
  for (auto token = tokens.begin(); token != tokens.end(); ++token) {
    if (token->kind == FormatPart::Month || token->kind == FormatPart::MonthTwo) {
      const auto next =
          std::find_if(token + 1, tokens.end(), [](const FormatToken& t) { return !IsPlain(t.kind); });
      if (IsHour(before) || (next != tokens.end() && IsSecond(next->kind))) {
        token->kind = token->kind == FormatPart::Month ? FormatPart::Minute : FormatPart::MinuteTwo;
      }
    }
    if (!IsPlain(token->kind)) before = token->kind;
  }
}

std::vector<FormatToken> Tokenize(std::string_view format) {
  std::vector<FormatToken> tokens;
  while (!format.empty()) tokens.push_back(TakeToken(format));
  TurnMonthsIntoMinutes(tokens);
  return tokens;
}

class Writer {
 public:
  Writer(Date date, const RegionalFormat& regional)
      : date_(date), civil_(ToCivil(date)), regional_(regional) {}

  std::string Write(std::string_view format) {
    const std::vector<FormatToken> tokens = Tokenize(format);
    const bool twelve_hours_outside = twelve_hours_;
    twelve_hours_ =
        std::any_of(tokens.begin(), tokens.end(), [](const FormatToken& t) { return IsMark(t.kind); });
    ++depth_;
    std::string text;
    for (const FormatToken& token : tokens) text += Text(token);
    --depth_;
    twelve_hours_ = twelve_hours_outside;
    return text;
  }

 private:
  std::string Text(const FormatToken& token) {
    switch (token.kind) {
      case FormatPart::Literal:
        return std::string(token.text);
      case FormatPart::Day:
        return Number(civil_.day, 1);
      case FormatPart::DayTwo:
        return Number(civil_.day, 2);
      case FormatPart::WeekdayShort:
        return regional_.short_weekdays[Weekday() - 1];
      case FormatPart::WeekdayLong:
        return regional_.weekdays[Weekday() - 1];
      case FormatPart::DateShort:
        return Nested(regional_.short_date, token);
      case FormatPart::DateLong:
        return Nested(regional_.long_date, token);
      case FormatPart::WeekdayNumber:
        return Number(static_cast<int>(Weekday()), 1);
      case FormatPart::WeekOfYear:
        return Number(WeekOfYear(), 1);
      case FormatPart::Month:
        return Number(civil_.month, 1);
      case FormatPart::MonthTwo:
        return Number(civil_.month, 2);
      case FormatPart::MonthShort:
        return regional_.short_months[Month() - 1];
      case FormatPart::MonthLong:
        return regional_.months[Month() - 1];
      case FormatPart::Quarter:
        return Number((civil_.month + 2) / 3, 1);
      case FormatPart::DayOfYear:
        return Number(DayOfYear(date_), 1);
      case FormatPart::YearTwo:
        return Number(civil_.year % 100, 2);
      case FormatPart::YearFour:
        return Number(civil_.year, 4);
      case FormatPart::Hour:
        return Number(Hour(), 1);
      case FormatPart::HourTwo:
        return Number(Hour(), 2);
      case FormatPart::Minute:
        return Number(civil_.minute, 1);
      case FormatPart::MinuteTwo:
        return Number(civil_.minute, 2);
      case FormatPart::Second:
        return Number(civil_.second, 1);
      case FormatPart::SecondTwo:
        return Number(civil_.second, 2);
      case FormatPart::General:
        return General(token);
      case FormatPart::TimeLong:
        return Nested(regional_.long_time, token);
      case FormatPart::UpperMark:
        return IsMorning() ? "AM" : "PM";
      case FormatPart::LowerMark:
        return IsMorning() ? "am" : "pm";
      case FormatPart::UpperLetterMark:
        return IsMorning() ? "A" : "P";
      case FormatPart::LowerLetterMark:
        return IsMorning() ? "a" : "p";
      case FormatPart::RegionalMark:
        return IsMorning() ? regional_.am : regional_.pm;
      case FormatPart::DateSeparator:
        return regional_.date_separator;
      case FormatPart::TimeSeparator:
        return regional_.time_separator;
    }
    return {};
  }

  std::string General(const FormatToken& token) {
    const bool midnight = civil_.hour == 0 && civil_.minute == 0 && civil_.second == 0;
    const bool day_zero = civil_.year == 1899 && civil_.month == 12 && civil_.day == 30;
    if (day_zero) return Nested(regional_.long_time, token);
    if (midnight) return Nested(regional_.short_date, token);
    if (depth_ > 1) return std::string(token.text);
    return Write(regional_.short_date) + " " + Write(regional_.long_time);
  }

  // A regional pattern inside a format. A pattern that refers to patterns itself would never end, so there
  // the letters stand for themselves.
  std::string Nested(std::string_view pattern, const FormatToken& token) {
    return depth_ > 1 ? std::string(token.text) : Write(pattern);
  }

  static std::string Number(int value, std::size_t width) {
    std::string digits = std::to_string(value);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return digits;
  }

  std::size_t Weekday() const { return static_cast<std::size_t>(WeekdayOf(date_)); }
  std::size_t Month() const { return static_cast<std::size_t>(civil_.month); }
  bool IsMorning() const { return civil_.hour < 12; }
  int Hour() const { return twelve_hours_ ? (civil_.hour + 11) % 12 + 1 : civil_.hour; }

  // Weeks that begin on Sunday; the first one holds 1 January.
  int WeekOfYear() const {
    const int day = DayOfYear(date_);
    const int weekday_of_january_1 = (static_cast<int>(Weekday()) - day % 7 + 7) % 7 + 1;
    return (day + weekday_of_january_1 - 2) / 7 + 1;
  }

  Date date_;
  CivilTime civil_;
  const RegionalFormat& regional_;
  bool twelve_hours_ = false;
  int depth_ = 0;
};

}  // namespace

std::string Format(Date date, std::string_view format, const RegionalFormat& regional) {
  return Writer(date, regional).Write(format.empty() ? "c" : ResolveName(format));
}

std::string Format(std::string_view text, std::string_view format, const RegionalFormat& regional) {
  if (format.empty()) return std::string(text);
  const std::optional<Date> date = ParseDate(text, regional);
  return date ? Format(*date, format, regional) : std::string(text);
}

}  // namespace mirelo
