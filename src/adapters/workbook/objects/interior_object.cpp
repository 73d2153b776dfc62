#include "adapters/workbook/objects/interior_object.h"

#include <utility>

#include "adapters/workbook/rules.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/refusals.h"

namespace mirelo::workbook {

namespace {

// The background between the lines is the whole fill then.
void MakeSolid(FillStyle& fill) {
  if (fill.pattern == kSolidPattern) return;
  std::swap(fill.foreground, fill.background);
  fill.pattern = kSolidPattern;
}

}  // namespace

Variant InteriorObject::ColorIndex() {
  return CommonOf(block_, [](const Style& style) { return IndexOfFill(style.fill); });
}

void InteriorObject::ColorIndex(std::int32_t index) {
  const workbook::Color color = ColorOfIndex(index);
  ChangeStyle(block_, [&](Style& style) {
    if (color == kAutomatic) {
      style.fill = {};
    } else {
      style.fill = {kSolidPattern, color,
                    style.fill.pattern == kSolidPattern ? style.fill.background : kAutomatic};
    }
  });
}

Variant InteriorObject::PatternColorIndex() {
  return CommonOf(block_, [](const Style& style) { return IndexOfColor(PatternColorOf(style.fill)); });
}

void InteriorObject::PatternColorIndex(std::int32_t index) {
  const workbook::Color color = ColorOfIndex(index);
  ChangeStyle(block_, [&](Style& style) {
    if (style.fill.pattern != 0) PatternColorOf(style.fill) = color;
  });
}

Variant InteriorObject::Pattern() {
  return CommonOf(block_, [](const Style& style) { return PatternOf(style.fill); });
}

void InteriorObject::Pattern(std::int32_t pattern) {
  switch (pattern) {
    case host::excel::xlPatternNone:
    case host::excel::xlPatternAutomatic:
      return ChangeStyle(block_, [](Style& style) { style.fill = {}; });
    case host::excel::xlPatternSolid:
      return ChangeStyle(block_, [](Style& style) { MakeSolid(style.fill); });
  }
  throw Refusals::NotAPattern();
}

Variant InteriorObject::Color() {
  return CommonOf(block_, [](const Style& style) { return NumberOfColor(ColorOfFill(style.fill), kWhite); });
}

}  // namespace mirelo::workbook
