#pragma once

#include <cstdint>

#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

// Gives a column another width. Of the charts that are placed by their cells, those to its right move, and
// those that cover the column and are sized with their cells change their width.
void ResizeColumn(Sheet& sheet, std::int32_t column, std::int32_t pixels);

}  // namespace mirelo::workbook
