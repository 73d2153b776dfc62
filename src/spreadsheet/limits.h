#pragma once

#include <cstddef>
#include <cstdint>

namespace mirelo::spreadsheet {

// How much a spreadsheet takes. What lies beyond is refused by sentences that tell these numbers, see
// refusals.h. The size of a sheet stands in area.h.

inline constexpr std::size_t kLongestText = 32'767;  // of a cell and of a comment, in UTF-16 units
inline constexpr double kMostDigits = 255;           // of the standard font, in a column's width
inline constexpr double kLeastFontSize = 1;          // points
inline constexpr double kGreatestFontSize = 409;

// The most cells whose values can be read or written at once.
inline constexpr std::int64_t kMostCells = std::int64_t{1} << 24;

// Sizes of what floats over cells are whole pixels from 1 to this.
inline constexpr std::int32_t kGreatestShape = 32'767;

inline constexpr std::int32_t kMostSeries = 255;
inline constexpr std::size_t kLongestTitle = 255;  // UTF-16 units
inline constexpr std::int32_t kLeastMarker = 2;    // points
inline constexpr std::int32_t kGreatestMarker = 72;

}  // namespace mirelo::spreadsheet
