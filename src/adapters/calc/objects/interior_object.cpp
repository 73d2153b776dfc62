#include "adapters/calc/objects/interior_object.h"

#include "adapters/calc/objects/block_change.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

using namespace host::excel;
using namespace spreadsheet;

namespace {

constexpr std::string_view kBackground = "CellBackColor";

}  // namespace

std::optional<Color> InteriorObject::BackgroundColor() const {
  return block_.document().Ask([&] { return block_.Properties().Common<sal_Int32>(kBackground); });
}

Variant InteriorObject::ColorIndex() {
  const auto background = BackgroundColor();
  if (!background) return {};
  return *background == kAutomatic ? std::int32_t{xlColorIndexNone} : IndexOfColor(*background);
}

void InteriorObject::ColorIndex(std::int32_t index) {
  const spreadsheet::Color color = ColorOfIndex(index);
  FormatCells(block_, {{kBackground, Any(color)}});
}

Variant InteriorObject::Color() {
  const auto background = BackgroundColor();
  return background ? Variant(NumberOfColor(*background, kWhite)) : Variant();
}

Variant InteriorObject::PatternColorIndex() { return std::int32_t{xlColorIndexAutomatic}; }

void InteriorObject::PatternColorIndex(std::int32_t index) { ColorOfIndex(index); }

Variant InteriorObject::Pattern() {
  const auto background = BackgroundColor();
  if (!background) return {};
  return *background == kAutomatic ? std::int32_t{xlPatternNone} : std::int32_t{xlPatternSolid};
}

void InteriorObject::Pattern(std::int32_t pattern) {
  if (pattern != xlPatternNone && pattern != xlPatternAutomatic && pattern != xlPatternSolid)
    throw Refusals::NotAPattern();
  const auto background = BackgroundColor();
  const bool is_solid = pattern == xlPatternSolid;
  if (is_solid && background && *background != kAutomatic) return;
  FormatCells(block_, {{kBackground, Any(is_solid ? kWhite : kAutomatic)}});
}

}  // namespace mirelo::calc
