#pragma once

#include "spreadsheet/errors.h"

namespace mirelo::spreadsheet {

// The size of letters that a client sets, in points. Error 1004 outside 1 to 409.
inline double CheckedLetterSize(double points) {
  if (!(1 <= points && points <= 409)) throw Refused("Letters are 1 to 409 points high.");
  return points;
}

}  // namespace mirelo::spreadsheet
