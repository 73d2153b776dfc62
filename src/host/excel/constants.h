#pragma once

#include <cstdint>

namespace mirelo::host::excel {

// Values of the spreadsheet's enumerations, under its own names.

enum XlDirection : std::int32_t { xlDown = -4121, xlToLeft = -4159, xlToRight = -4161, xlUp = -4162 };

enum XlHAlign : std::int32_t {
  xlHAlignGeneral = 1,  // text to the left, numbers to the right, booleans and errors in the middle
  xlHAlignFill = 5,
  xlHAlignCenterAcrossSelection = 7,
  xlHAlignCenter = -4108,
  xlHAlignDistributed = -4117,
  xlHAlignJustify = -4130,
  xlHAlignLeft = -4131,
  xlHAlignRight = -4152,
};

// Colour indexes besides those of the palette, which run from 1 to 56.
enum XlColorIndex : std::int32_t {
  xlColorIndexNone = -4142,       // no fill
  xlColorIndexAutomatic = -4105,  // the colour that text has when nobody chose one
};

// The error by which the spreadsheet refuses: a bad address or name, a value out of its range, a cell off the
// sheet.
inline constexpr std::int32_t kApplicationError = 1004;

}  // namespace mirelo::host::excel
