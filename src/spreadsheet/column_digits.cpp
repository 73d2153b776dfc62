#include "spreadsheet/column_digits.h"

#include <cmath>

#include "spreadsheet/limits.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

namespace {

constexpr double kPixelsOfDigit = 7;
constexpr double kPixelsBeside = 5;  // of the digits, in a column of one at least
constexpr double kPixelsOfOne = kPixelsOfDigit + kPixelsBeside;

}  // namespace

double DigitsOfPixels(std::int32_t pixels) {
  const double digits =
      pixels < kPixelsOfOne ? pixels / kPixelsOfOne : (pixels - kPixelsBeside) / kPixelsOfDigit;
  return std::round(digits * 100) / 100;
}

std::int32_t PixelsOfDigits(double digits) {
  const double pixels = digits < 1 ? digits * kPixelsOfOne : digits * kPixelsOfDigit + kPixelsBeside;
  return static_cast<std::int32_t>(std::round(pixels));
}

double CheckedDigits(double digits) {
  if (!(digits >= 0 && digits <= kMostDigits)) throw Refusals::NotAColumnWidth();
  return digits;
}

}  // namespace mirelo::spreadsheet
