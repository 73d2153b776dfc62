#pragma once

#include <cstdint>

#include "host/excel/constants.h"
#include "spreadsheet/palette.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

// The colour of an index that a client sets; kAutomatic for the indexes that mean no colour of its own. Error
// 1004 for others.
inline Color ColorOfIndex(std::int32_t index) {
  using namespace host::excel;
  if (index == 0 || index == xlColorIndexNone || index == xlColorIndexAutomatic) return kAutomatic;
  if (index < 1 || index > kPaletteSize) throw Refusals::NotAColorIndex();
  return PaletteColor(index);
}

inline std::int32_t IndexOfColor(Color color) {
  return color == kAutomatic ? std::int32_t{host::excel::xlColorIndexAutomatic} : NearestIndex(color);
}

inline constexpr std::uint8_t kSolidPattern = 1;

// The colour that shows most of a fill; kAutomatic where there is no fill.
inline Color ColorOfFill(const FillStyle& fill) {
  return fill.pattern == 0 ? kAutomatic : fill.pattern == kSolidPattern ? fill.foreground : fill.background;
}
inline std::int32_t IndexOfFill(const FillStyle& fill) {
  return fill.pattern == 0 ? std::int32_t{host::excel::xlColorIndexNone} : IndexOfColor(ColorOfFill(fill));
}

// The colour of the pattern's lines. A solid fill keeps one and does not show it. `Fill` may be constant.
template <class Fill>
auto& PatternColorOf(Fill& fill) {
  return fill.pattern == kSolidPattern ? fill.background : fill.foreground;
}
inline std::int32_t PatternOf(const FillStyle& fill) {
  if (fill.pattern == 0) return host::excel::xlPatternNone;
  return fill.pattern == kSolidPattern ? host::excel::xlPatternSolid : host::excel::xlPatternAutomatic;
}

// A colour as clients are told it: red in the lowest byte.
inline constexpr Color kBlack = 0x000000;
inline constexpr Color kWhite = 0xFFFFFF;
inline std::int32_t NumberOfColor(Color color, Color automatic) {
  const Color shown = color == kAutomatic ? automatic : color;
  return (shown & 0xFF) << 16 | (shown & 0xFF00) | (shown >> 16 & 0xFF);
}

}  // namespace mirelo::spreadsheet
