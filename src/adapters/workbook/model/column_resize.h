#pragma once

#include <cstdint>

#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

// Gives a column another width. Charts beside it that move with their cells move, and those above it that
// grow with their cells grow.
void ResizeColumn(Sheet& sheet, std::int32_t column, std::int32_t pixels);

// The width of a column in digits of the standard letters, to two places, and back.
inline constexpr double kMostDigits = 255;
double DigitsOfPixels(std::int32_t pixels);
std::int32_t PixelsOfDigits(double digits);

}  // namespace mirelo::workbook
