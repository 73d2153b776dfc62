#pragma once

#include <string>

#include "automation/variant.h"

namespace mirelo::app {

// What a quote's text becomes in a cell under this column name: dates and times as such, numbers as numbers,
// all else text that stays text, whatever a spreadsheet would make of it. Nothing for an empty text.
Variant CellValue(const std::string& column, const std::string& text);

}  // namespace mirelo::app
