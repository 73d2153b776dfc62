#include "day/cell_value.h"

#include <cmath>
#include <cstddef>

#include "automation/number.h"
#include "automation/regional_format.h"
#include "automation/text.h"

namespace mirelo::day {

namespace {

// A quote comes from outside: what is no number or date must stay text. The apostrophe says so and is not
// part of the cell's text.
Variant AsText(const std::string& text) { return text.empty() ? Variant() : Variant("'" + text); }

}  // namespace

bool IsTooLong(const std::string& text) {
  return text.size() > static_cast<std::size_t>(kLongestText) && Len(text) > kLongestText;
}

Variant CellValue(const std::string& column, const std::string& text) {
  if (EqualText(column, "Ticker")) return AsText(text);
  if (EqualText(column, "Date") || EqualText(column, "Time")) {
    const auto date = ParseDate(text, RegionalFormat::Standard());
    return date ? Variant(*date) : AsText(text);
  }
  const auto number = ParseNumber(text);
  return number && std::isfinite(*number) ? Variant(*number) : AsText(text);
}

}  // namespace mirelo::day
