#include "adapters/workbook/objects/interior_object.h"

#include "adapters/workbook/objects/color_index.h"

namespace mirelo::workbook {

namespace {

constexpr std::uint8_t kNoFill = 0;
constexpr std::uint8_t kSolid = 1;

std::int32_t FillIndex(const FillStyle& fill) {
  if (fill.pattern == kNoFill) return host::excel::xlColorIndexNone;
  return IndexOfColor(fill.pattern == kSolid ? fill.foreground : fill.background);  // what shows most
}

}  // namespace

Variant InteriorObject::ColorIndex() {
  return CommonOf(block_, [](const Style& style) { return FillIndex(style.fill); });
}

void InteriorObject::ColorIndex(std::int32_t index) {
  const Color color = ColorOfIndex(index);
  FillStyle fill;
  if (color != kAutomatic) fill = {kSolid, color, kAutomatic};
  ChangeStyle(block_, [&](Style& style) { style.fill = fill; });
}

}  // namespace mirelo::workbook
