#pragma once

#include <cstdint>

#include "adapters/workbook/errors.h"
#include "adapters/workbook/palette.h"
#include "host/excel/constants.h"

namespace mirelo::workbook {

// The colour of an index that a client sets; kAutomatic for the indexes that mean no colour of its own. Error
// 1004 for others.
inline Color ColorOfIndex(std::int32_t index) {
  using namespace host::excel;
  if (index == 0 || index == xlColorIndexNone || index == xlColorIndexAutomatic) return kAutomatic;
  if (index < 1 || index > kPaletteSize) throw Refused("This is no colour index.");
  return PaletteColor(index);
}

inline std::int32_t IndexOfColor(Color color) {
  return color == kAutomatic ? std::int32_t{host::excel::xlColorIndexAutomatic} : NearestIndex(color);
}

}  // namespace mirelo::workbook
