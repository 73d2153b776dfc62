#pragma once

#include <cstdint>
#include <string_view>

#include "spreadsheet/area.h"

namespace mirelo::spreadsheet {

// An area by its first cell and its size. Both may leave the sheet, hence 64 bits; error 1004 then.
Area AreaOf(std::int64_t row, std::int64_t column, std::int64_t rows, std::int64_t columns);

// The cell with this number, counted row by row from an area's first cell, also outside of the area: the
// area's width stays the length of a row. Error 1004 off the sheet.
Area CellByNumber(const Area& area, std::int32_t number);

// What an address names; error 1004 for other text and for what lies off the sheet.
Area AreaAt(std::string_view address);

// Whole rows "5" or "5:7", whole columns "B" or "B:D"; error 1004 for what is none.
Area RowsAt(std::string_view rows);
Area ColumnsAt(std::string_view columns);

}  // namespace mirelo::spreadsheet
