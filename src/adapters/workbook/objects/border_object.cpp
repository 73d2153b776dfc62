#include "adapters/workbook/objects/border_object.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "adapters/workbook/rules.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

using namespace host::excel;

namespace {

struct LineKind {
  std::int32_t style;
  std::int32_t weight;
};

// By the number of a line in the model. Of a style's kinds the thinnest comes first.
constexpr std::array<LineKind, 14> kKinds{{
    {xlLineStyleNone, xlThin},
    {xlContinuous, xlThin},
    {xlContinuous, xlMedium},
    {xlDash, xlThin},
    {xlDot, xlThin},
    {xlContinuous, xlThick},
    {xlDouble, xlThick},
    {xlContinuous, xlHairline},
    {xlDash, xlMedium},
    {xlDashDot, xlThin},
    {xlDashDot, xlMedium},
    {xlDashDotDot, xlThin},
    {xlDashDotDot, xlMedium},
    {xlSlantDashDot, xlMedium},
}};

// The number of the first kind that fits; 0, which is no line, when none does.
template <class Fits>
std::uint8_t FirstKind(Fits&& fits) {
  const auto found = std::find_if(kKinds.begin() + 1, kKinds.end(), fits);
  return found == kKinds.end() ? std::uint8_t{0} : static_cast<std::uint8_t>(found - kKinds.begin());
}

const LineKind& KindOf(const BorderLine& line) { return kKinds[line.line]; }

// The kind of this style and weight, or 0.
std::uint8_t Kind(std::int32_t style, std::int32_t weight) {
  return FirstKind([&](const LineKind& kind) { return kind.style == style && kind.weight == weight; });
}

}  // namespace

Variant BorderObject::LineStyle() {
  return lines_.Common([](const BorderLine& line) { return KindOf(line).style; });
}

void BorderObject::LineStyle(std::int32_t style) {
  if (style == xlLineStyleNone) return lines_.Change([](BorderLine& line) { line = {}; });
  const std::uint8_t thinnest = FirstKind([&](const LineKind& kind) { return kind.style == style; });
  if (thinnest == 0) throw Refused("This is no style of lines.");
  lines_.Change([&](BorderLine& line) {
    const std::uint8_t as_heavy = line.line == 0 ? thinnest : Kind(style, KindOf(line).weight);
    line.line = as_heavy != 0 ? as_heavy : thinnest;
  });
}

Variant BorderObject::Weight() {
  return lines_.Common([](const BorderLine& line) { return KindOf(line).weight; });
}

void BorderObject::Weight(std::int32_t weight) {
  const std::uint8_t continuous = Kind(xlContinuous, weight);
  if (continuous == 0) throw Refused("This is no weight of lines.");
  lines_.Change([&](BorderLine& line) {
    const std::uint8_t of_style = Kind(KindOf(line).style, weight);
    line.line = of_style != 0 ? of_style : continuous;
  });
}

Variant BorderObject::ColorIndex() {
  return lines_.Common([](const BorderLine& line) {
    return line.line == 0 ? std::int32_t{xlColorIndexNone} : IndexOfColor(line.color);
  });
}

void BorderObject::ColorIndex(std::int32_t index) {
  if (index == xlColorIndexNone) return LineStyle(xlLineStyleNone);
  const Color color = ColorOfIndex(index);
  const std::uint8_t thin = Kind(xlContinuous, xlThin);
  lines_.Change([&](BorderLine& line) { line = {line.line != 0 ? line.line : thin, color}; });
}

}  // namespace mirelo::workbook
