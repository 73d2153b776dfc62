#pragma once

#include <cstdint>

#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

// Gives a column another width. Of the charts that are placed by their cells, those to its right move, and
// those that cover the column and are sized with their cells change their width.
void ResizeColumn(Sheet& sheet, std::int32_t column, std::int32_t pixels);

// From the width of a column in pixels to that in digits of the standard font, to two decimal places, and
// back.
inline constexpr double kMostDigits = 255;
double DigitsOfPixels(std::int32_t pixels);
std::int32_t PixelsOfDigits(double digits);

}  // namespace mirelo::workbook
