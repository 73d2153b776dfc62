#include "adapters/workbook/objects/font_object.h"

#include "adapters/workbook/rules.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/font_size.h"

namespace mirelo::workbook {

Variant FontObject::Bold() {
  return CommonOf(block_, [](const Style& style) { return style.font.bold; });
}

void FontObject::Bold(bool bold) {
  ChangeStyle(block_, [&](Style& style) { style.font.bold = bold; });
}

Variant FontObject::Size() {
  return CommonOf(block_, [](const Style& style) { return style.font.size; });
}

void FontObject::Size(double points) {
  CheckedFontSize(points);
  ChangeStyle(block_, [&](Style& style) { style.font.size = points; });
}

Variant FontObject::ColorIndex() {
  return CommonOf(block_, [](const Style& style) { return IndexOfColor(style.font.color); });
}

void FontObject::ColorIndex(std::int32_t index) {
  const workbook::Color color = ColorOfIndex(index);
  ChangeStyle(block_, [&](Style& style) { style.font.color = color; });
}

Variant FontObject::Color() {
  return CommonOf(block_, [](const Style& style) { return NumberOfColor(style.font.color, kBlack); });
}

}  // namespace mirelo::workbook
