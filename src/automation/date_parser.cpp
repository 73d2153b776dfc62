#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "automation/date.h"
#include "automation/regional_format.h"
#include "automation/utf8.h"

namespace mirelo {

namespace {

enum class DateTokenKind {
  Number,
  Month,
  Weekday,
  Morning,
  Afternoon,
  DateSeparator,
  TimeSeparator,
  Comma,
  End
};

struct DateToken {
  DateTokenKind kind = DateTokenKind::End;
  int value = 0;           // of a number, or 1 to 12 of a month
  std::size_t digits = 0;  // of a number
};

bool IsDateDigit(char c) { return c >= '0' && c <= '9'; }
bool IsDateBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0'; }
bool IsDateLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

// Cuts text into the tokens of dates and times.
class Scanner {
 public:
  explicit Scanner(const RegionalFormat& regional) : regional_(regional) {}

  // The tokens, an End token last; nothing when the text holds something else.
  std::optional<std::vector<DateToken>> Scan(std::string_view text) {
    std::vector<DateToken> tokens;
    while (!text.empty()) {
      if (IsDateBlank(text.front())) {
        text.remove_prefix(1);
        continue;
      }
      const char first = text.front();
      const std::optional<DateToken> token = IsDateDigit(first)    ? TakeNumber(text)
                                             : IsDateLetter(first) ? TakeName(text)
                                                                   : std::nullopt;
      if (token) {
        tokens.push_back(*token);
      } else if (!TakeSeparator(text, tokens)) {
        return std::nullopt;
      }
    }
    tokens.emplace_back();
    return tokens;
  }

 private:
  // A number of one to four digits.
  static std::optional<DateToken> TakeNumber(std::string_view& text) {
    DateToken token{DateTokenKind::Number};
    for (; token.digits < text.size() && IsDateDigit(text[token.digits]); ++token.digits) {
      if (token.digits == 4) return std::nullopt;
      token.value = token.value * 10 + (text[token.digits] - '0');
    }
    text.remove_prefix(token.digits);
    return token;
  }

  // The longest name that the text starts with and that no letter follows. Names begin with a letter.
  std::optional<DateToken> TakeName(std::string_view& text) const {
    std::optional<DateToken> best;
    std::size_t best_length = 0;
    const auto offer = [&](std::string_view name, DateTokenKind kind, int value) {
      const std::size_t length = name.empty() ? utf8::kNoMatch : utf8::MatchIgnoringCase(text, name);
      if (length == utf8::kNoMatch || length <= best_length) return;
      if (length < text.size() && IsDateLetter(text[length])) return;
      best = DateToken{kind, value};
      best_length = length;
    };
    for (const RegionalFormat* names : {&regional_, &RegionalFormat::Standard()}) {
      for (int i = 0; i < 12; ++i) {
        offer(names->months[static_cast<std::size_t>(i)], DateTokenKind::Month, i + 1);
        offer(names->short_months[static_cast<std::size_t>(i)], DateTokenKind::Month, i + 1);
      }
      for (const std::string& name : names->weekdays) offer(name, DateTokenKind::Weekday, 0);
      for (const std::string& name : names->short_weekdays) offer(name, DateTokenKind::Weekday, 0);
      offer(names->am, DateTokenKind::Morning, 0);
      offer(names->pm, DateTokenKind::Afternoon, 0);
    }
    offer("A", DateTokenKind::Morning, 0);
    offer("P", DateTokenKind::Afternoon, 0);
    text.remove_prefix(best_length);
    return best;
  }

  bool TakeSeparator(std::string_view& text, std::vector<DateToken>& tokens) const {
    const auto take = [&](std::string_view separator, DateTokenKind kind) {
      if (separator.empty() || !text.starts_with(separator)) return false;
      text.remove_prefix(separator.size());
      tokens.push_back({kind});
      return true;
    };
    return take(":", DateTokenKind::TimeSeparator) || take("/", DateTokenKind::DateSeparator) ||
           take("-", DateTokenKind::DateSeparator) || take(".", DateTokenKind::DateSeparator) ||
           take(",", DateTokenKind::Comma) || take(regional_.date_separator, DateTokenKind::DateSeparator) ||
           take(regional_.time_separator, DateTokenKind::TimeSeparator);
  }

  const RegionalFormat& regional_;
};

// One or two digits name a year of this or the last century.
int FullYear(const DateToken& year) {
  if (year.digits > 2) return year.value;
  return year.value < 30 ? 2000 + year.value : 1900 + year.value;
}

bool CanOnlyBeYear(const DateToken& number) { return number.digits > 2 || number.value > 31; }

// Reads the tokens from the first to the last. Each reading member leaves the position behind what it took.
class Reader {
 public:
  Reader(const std::vector<DateToken>& tokens, const RegionalFormat& regional,
         RegionalFormat::DateOrder order)
      : tokens_(tokens), regional_(regional), order_(order) {}

  std::optional<Date> Read() {
    bool has_date = false;
    bool has_time = false;
    while (Peek() != DateTokenKind::End) {
      const bool at_time = IsAtTime();
      bool& has = at_time ? has_time : has_date;
      if (has || !(at_time ? ReadTime() : ReadDay())) return std::nullopt;
      has = true;
      full_stop_parts_times_ = has_date && regional_.time_separator == ".";
      if (Peek() == DateTokenKind::Comma && Peek(1) != DateTokenKind::End) ++position_;
    }
    if (!has_date && !has_time) return std::nullopt;
    return ToDate(civil_);
  }

 private:
  DateTokenKind Peek(std::size_t ahead = 0) const {
    return tokens_[std::min(position_ + ahead, tokens_.size() - 1)].kind;
  }
  bool IsMark(std::size_t ahead) const {
    return Peek(ahead) == DateTokenKind::Morning || Peek(ahead) == DateTokenKind::Afternoon;
  }
  bool IsAtTime() const { return Peek() == DateTokenKind::Number && (IsTimeSeparator(1) || IsMark(1)); }
  bool IsTimeSeparator(std::size_t ahead) const {
    return Peek(ahead) == DateTokenKind::TimeSeparator ||
           (full_stop_parts_times_ && Peek(ahead) == DateTokenKind::DateSeparator);
  }

  // Hours, then minutes and seconds that may be missing, then a mark that may be missing unless the hour is
  // alone.
  bool ReadTime() {
    int* const fields[] = {&civil_.hour, &civil_.minute, &civil_.second};
    for (int* field : fields) {
      const DateToken& number = tokens_[position_];
      if (number.kind != DateTokenKind::Number || number.digits > 2) return false;
      *field = number.value;
      ++position_;
      if (!IsTimeSeparator(0)) break;
      ++position_;
      if (field == &civil_.second) return false;
    }
    return ApplyMark() && civil_.hour < 24 && civil_.minute < 60 && civil_.second < 60;
  }

  bool ApplyMark() {
    if (!IsMark(0)) return true;
    if (civil_.hour > 12) return false;
    civil_.hour = civil_.hour % 12 + (Peek() == DateTokenKind::Afternoon ? 12 : 0);
    ++position_;
    return true;
  }

  // Up to three of day, month and year, parted by blanks, one separator or one comma; a weekday may stand in
  // front.
  bool ReadDay() {
    if (Peek() == DateTokenKind::Weekday) {
      ++position_;
      if (Peek() == DateTokenKind::Comma || Peek() == DateTokenKind::DateSeparator) ++position_;
    }
    std::vector<DateToken> parts;
    while (parts.size() < 3 && (Peek() == DateTokenKind::Number || Peek() == DateTokenKind::Month) &&
           !IsAtTime()) {
      parts.push_back(tokens_[position_++]);
      if (parts.size() < 3 && (Peek() == DateTokenKind::DateSeparator || Peek() == DateTokenKind::Comma))
        ++position_;
    }
    const auto month = std::find_if(parts.begin(), parts.end(),
                                    [](const DateToken& t) { return t.kind == DateTokenKind::Month; });
    if (month == parts.end()) return parts.size() == 3 && SetFromNumbers(parts);
    const int month_number = month->value;
    parts.erase(month);
    return SetFromMonthName(month_number, parts);
  }

  // Month name and year, or month name, day and year: a number that can be no day is the year, else the last
  // is.
  bool SetFromMonthName(int month, const std::vector<DateToken>& numbers) {
    const bool all_numbers = std::all_of(numbers.begin(), numbers.end(),
                                         [](const DateToken& t) { return t.kind == DateTokenKind::Number; });
    if (!all_numbers || numbers.empty()) return false;
    if (numbers.size() == 1) return CanOnlyBeYear(numbers[0]) && SetDay(numbers[0], month, 1);
    const bool year_first = CanOnlyBeYear(numbers[0]);
    return SetDay(numbers[year_first ? 0 : 1], month, numbers[year_first ? 1 : 0].value);
  }

  // The expected order first, then the others. A number that can only be a year is never day or month, since
  // those are checked against the calendar.
  bool SetFromNumbers(const std::vector<DateToken>& n) {
    using Order = RegionalFormat::DateOrder;
    for (Order order : {order_, Order::MonthDayYear, Order::DayMonthYear, Order::YearMonthDay}) {
      const bool set = order == Order::MonthDayYear   ? SetDay(n[2], n[0], n[1])
                       : order == Order::DayMonthYear ? SetDay(n[2], n[1], n[0])
                                                      : SetDay(n[0], n[1], n[2]);
      if (set) return true;
    }
    return false;
  }

  bool SetDay(const DateToken& year, const DateToken& month, const DateToken& day) {
    return month.digits <= 2 && day.digits <= 2 && SetDay(year, month.value, day.value);
  }

  bool SetDay(const DateToken& year, int month, int day) {
    const int full_year = FullYear(year);
    if (full_year < 100 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(full_year, month))
      return false;
    civil_.year = full_year;
    civil_.month = month;
    civil_.day = day;
    return true;
  }

  const std::vector<DateToken>& tokens_;
  const RegionalFormat& regional_;
  const RegionalFormat::DateOrder order_;
  std::size_t position_ = 0;
  bool full_stop_parts_times_ = false;  // where it parts both, it is the time's only behind a complete day
  CivilTime civil_;
};

}  // namespace

std::optional<Date> ParseDate(std::string_view text, const RegionalFormat& format) {
  return ParseDate(text, format, format.date_order);
}

std::optional<Date> ParseDate(std::string_view text, const RegionalFormat& format,
                              RegionalFormat::DateOrder order) {
  const auto tokens = Scanner(format).Scan(text);
  return tokens ? Reader(*tokens, format, order).Read() : std::nullopt;
}

}  // namespace mirelo
