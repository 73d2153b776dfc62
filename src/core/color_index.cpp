#include <algorithm>
#include <cstdint>

#include "core/mGlobal.h"
#include "dialog/palette.h"

namespace mirelo::mGlobal {

// The spreadsheet's indexes 17 to 32, the colours of charts, are absent on purpose: nobody can pick them for
// a fill, and where no other index has the same colour it maps to none.
std::int32_t GetColorIndex(std::int32_t color) {
  const auto row = std::ranges::find(kPalette, color, &PaletteColor::color);
  return row == kPalette.end() ? kNoFill : row->index;
}

}  // namespace mirelo::mGlobal
