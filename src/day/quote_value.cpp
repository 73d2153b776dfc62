#include "day/quote_value.h"

#include <cmath>
#include <cstddef>
#include <string_view>
#include <vector>

#include "automation/number.h"
#include "automation/regional_format.h"
#include "automation/text.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo::day {

namespace {

// Of hours, minutes and seconds with one mark between them, whichever; of anything else the text itself.
std::string WithColons(const std::string& text) {
  constexpr std::string_view kDigits = "0123456789";
  const std::size_t hours = text.find_first_not_of(kDigits);
  if (hours == 0 || hours == std::string::npos) return text;
  const std::size_t mark = text.find_first_of(kDigits, hours) - hours;
  const std::vector<std::string> parts = Split(text, text.substr(hours, mark));
  return parts.size() == 3 ? Join(parts, ":") : text;
}

}  // namespace

void QuoteValue::Set(double number) {
  if (!std::isfinite(number)) {
    *this = Text(NumberText(number));
    return;
  }
  kind_ = Kind::Number;
  number_ = number + 0.0;  // a zero has no sign
  text_.clear();
}

double QuoteValue::ToNumber() const { return kind_ == Kind::Number ? number_ : Val(text_); }

std::string QuoteValue::ToText() const {
  return kind_ == Kind::Number && text_.empty() ? NumberText(number_) : text_;
}

// A quote comes from outside: what is no number or date must stay text. The apostrophe says so and is not
// part of the cell's text.
Variant QuoteValue::ToCell() const {
  switch (kind_) {
    case Kind::Number:
      return number_;
    case Kind::Moment:
      return Date{number_};
    case Kind::Text:
      return "'" + text_;
    case Kind::Nothing:
      break;
  }
  return {};
}

Reading ReadingOf(const std::string& column) {
  const ColumnRow* const row = FindColumn(UCase(column));
  if (row == nullptr) return Reading::AsNumber;
  switch (row->kind) {
    case ColumnKind::Ticker:
      return Reading::AsText;
    case ColumnKind::Date:
      return Reading::AsMoment;
    case ColumnKind::Time:
      return Reading::AsTime;
    case ColumnKind::Price:
    case ColumnKind::Change:
    case ColumnKind::Count:
    case ColumnKind::Mark:
      break;
  }
  return Reading::AsNumber;
}

bool IsTooLong(const std::string& text) {
  return text.size() > static_cast<std::size_t>(kLongestText) && Len(text) > kLongestText;
}

QuoteValue ReadValue(Reading reading, std::string text) {
  if (text.empty() || reading == Reading::AsText || IsTooLong(text)) return QuoteValue::Text(std::move(text));
  if (reading == Reading::AsMoment || reading == Reading::AsTime) {
    const auto date =
        ParseDate(reading == Reading::AsTime ? WithColons(text) : text, RegionalFormat::Standard());
    return date ? QuoteValue::Moment(*date, std::move(text)) : QuoteValue::Text(std::move(text));
  }
  const auto number = ParseNumber(text);
  return number && std::isfinite(*number) ? QuoteValue::Number(*number, std::move(text))
                                          : QuoteValue::Text(std::move(text));
}

}  // namespace mirelo::day
