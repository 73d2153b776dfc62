#pragma once

#include <cstdint>

#include "spreadsheet/style.h"

namespace mirelo::spreadsheet {

inline constexpr std::int32_t kPaletteSize = 56;

// The colour of an index from 1 to kPaletteSize of the standard palette.
Color PaletteColor(std::int32_t index);

// The index of the nearest colour; of equals the lowest, those that are meant for charts (17 to 32) last.
// `color` is not automatic.
std::int32_t NearestIndex(Color color);

}  // namespace mirelo::spreadsheet
