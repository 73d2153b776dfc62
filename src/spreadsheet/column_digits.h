#pragma once

#include <cstdint>

namespace mirelo::spreadsheet {

// From the width of a column in pixels to that in digits of the standard font, to two decimal places, and
// back.
double DigitsOfPixels(std::int32_t pixels);
std::int32_t PixelsOfDigits(double digits);

// The width that a client sets, in digits. Error 1004 outside 0 to kMostDigits.
double CheckedDigits(double digits);

}  // namespace mirelo::spreadsheet
