#pragma once

#include <string>
#include <string_view>

#include "spreadsheet/cell_value.h"

namespace mirelo::spreadsheet {

// The text that a cell shows in a number format, in the region of the United States. Formats that show
// fractions ("# ?/?") show the number in the General form.
std::string DisplayedText(const CellValue& value, std::string_view format);

// A number in the General form: at most eleven characters, sign aside.
std::string GeneralNumber(double number);

// A number in one section of a format. For a date section, negative numbers and those behind the year 9999
// show as "#", as a number that has no date does.
std::string NumberInSection(double number, std::string_view section);
std::string DateInSection(double serial, std::string_view section);

}  // namespace mirelo::spreadsheet
