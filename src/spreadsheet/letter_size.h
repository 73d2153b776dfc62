#pragma once

#include "spreadsheet/limits.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

// The size of letters that a client sets, in points. Error 1004 outside kLeastLetters to kGreatestLetters.
inline double CheckedLetterSize(double points) {
  if (!(kLeastLetters <= points && points <= kGreatestLetters)) throw Refusals::NotALetterSize();
  return points;
}

}  // namespace mirelo::spreadsheet
