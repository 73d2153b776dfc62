#pragma once

#include <optional>
#include <string_view>

#include "automation/regional_format.h"
#include "spreadsheet/cell_value.h"

namespace mirelo::spreadsheet {

// What typed text becomes: a value, and the number format that its form asks for; empty when it asks for
// none.
struct TypedValue {
  CellValue value;
  std::string_view number_format;
};

// What a person's typing of `text` into a cell means: see host::excel::Range::Value.
TypedValue TypedText(std::string_view text, const RegionalFormat& regional);

// The same in a cell that takes everything for text: only a leading apostrophe is taken off.
TypedValue TextAsIs(std::string_view text);

// The number that the whole text is: sign, "$", parentheses for negative, groups of three, exponent, "%".
std::optional<TypedValue> TypedNumber(std::string_view text, const RegionalFormat& regional);

// The date, time or both that the whole text is. A date has its year; numbers are in the region's order
// unless the first has four digits; months may be names; two-digit years are 1930 to 2029. 29 February 1900
// counts.
std::optional<TypedValue> TypedDate(std::string_view text, const RegionalFormat& regional);

}  // namespace mirelo::spreadsheet
