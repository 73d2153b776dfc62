#pragma once

#include <cstdint>

namespace mirelo::spreadsheet {

// From the width of a column in pixels to that in digits of the standard font, to two decimal places, and
// back.
inline constexpr double kMostDigits = 255;
double DigitsOfPixels(std::int32_t pixels);
std::int32_t PixelsOfDigits(double digits);

}  // namespace mirelo::spreadsheet
