#pragma once

#include "spreadsheet/limits.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

// The font size that a client sets, in points. Error 1004 outside kLeastFontSize to kGreatestFontSize.
inline double CheckedFontSize(double points) {
  if (!(kLeastFontSize <= points && points <= kGreatestFontSize)) throw Refusals::NotAFontSize();
  return points;
}

}  // namespace mirelo::spreadsheet
