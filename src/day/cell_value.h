#pragma once

#include <cstdint>
#include <string>

#include "automation/variant.h"

namespace mirelo::day {

// The longest text of a quote, in characters, that is taken: half of what a cell can hold, because some
// characters take several in a file, which has no more room than a cell.
inline constexpr std::int32_t kLongestText = 16'383;

// Whether a text is longer; it is to be cut then, lest no cell takes it.
bool IsTooLong(const std::string& text);

// What a quote's text, none too long, becomes in a cell under this column name: dates and times as such,
// numbers as numbers, all else text that stays text, whatever a spreadsheet would make of it. Nothing for an
// empty text.
Variant CellValue(const std::string& column, const std::string& text);

}  // namespace mirelo::day
