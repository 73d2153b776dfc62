#pragma once

#include <cstdint>

#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

// Where cells lie, in points from the sheet's top left corner. The cost grows with the number of runs of
// columns or rows of one size, not with the number of columns or rows.

inline constexpr double kPointsPerPixel = 0.75;  // of a 96 dpi screen
inline constexpr double kStandardRowHeight = 15;

// What the window shows of a sheet, from its first cell on and whatever is frozen: 20 columns and 27 rows of
// the standard sizes.
inline constexpr double kWindowWidth = 960;
inline constexpr double kWindowHeight = 405;

// The columns (rows) from `first` to `last` together; 0 when there are none.
double WidthOfColumns(const Sheet& sheet, std::int32_t first, std::int32_t last);
double HeightOfRows(const Sheet& sheet, std::int32_t first, std::int32_t last);

// The cells that the window shows, those at its edge in part.
Area VisibleArea(const Sheet& sheet);

}  // namespace mirelo::workbook
