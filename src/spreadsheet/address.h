#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "spreadsheet/area.h"

namespace mirelo::spreadsheet {

// "A" to "XFD".
std::string ColumnName(std::int32_t column);

// "B2", "$A$1:C3" with the corners in any order, "A:C", "3:5"; letters of either case. Nothing for other text
// and for what lies off the sheet.
std::optional<Area> ParseAddress(std::string_view text);

// "A1" of one cell, as files write it, and back; nothing for other text and for cells off the sheet.
std::optional<CellPlace> ParseCellName(std::string_view text);
std::string CellName(std::int32_t row, std::int32_t column);

// "$A$2:$C$4", "$A:$C", "$2:$4"; without the "$" of the part that is not absolute.
std::string AddressText(const Area& area, bool row_absolute, bool column_absolute);

}  // namespace mirelo::spreadsheet
