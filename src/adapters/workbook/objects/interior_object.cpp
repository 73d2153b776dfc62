#include "adapters/workbook/objects/interior_object.h"

#include "adapters/workbook/objects/color_index.h"

namespace mirelo::workbook {

namespace {

constexpr std::uint8_t kSolid = 1;

}  // namespace

Variant InteriorObject::ColorIndex() {
  return CommonOf(block_, [](const Style& style) { return IndexOfFill(style.fill); });
}

void InteriorObject::ColorIndex(std::int32_t index) {
  const workbook::Color color = ColorOfIndex(index);
  FillStyle fill;
  if (color != kAutomatic) fill = {kSolid, color, kAutomatic};
  ChangeStyle(block_, [&](Style& style) { style.fill = fill; });
}

Variant InteriorObject::Color() {
  return CommonOf(block_, [](const Style& style) { return NumberOfColor(ColorOfFill(style.fill), kWhite); });
}

}  // namespace mirelo::workbook
