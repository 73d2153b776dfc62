#include "adapters/calc/objects/interior_object.h"

#include "adapters/calc/objects/block_change.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

using namespace host::excel;
using namespace spreadsheet;

namespace {

constexpr std::string_view kGround = "CellBackColor";

}  // namespace

std::optional<Color> InteriorObject::Ground() const {
  return block_.document().Ask([&] { return block_.Properties().Common<sal_Int32>(kGround); });
}

Variant InteriorObject::ColorIndex() {
  const auto ground = Ground();
  if (!ground) return {};
  return *ground == kAutomatic ? std::int32_t{xlColorIndexNone} : IndexOfColor(*ground);
}

void InteriorObject::ColorIndex(std::int32_t index) {
  const spreadsheet::Color color = ColorOfIndex(index);
  FormatCells(block_, {{kGround, Any(color)}});
}

Variant InteriorObject::Color() {
  const auto ground = Ground();
  return ground ? Variant(NumberOfColor(*ground, kWhite)) : Variant();
}

Variant InteriorObject::PatternColorIndex() { return std::int32_t{xlColorIndexAutomatic}; }

void InteriorObject::PatternColorIndex(std::int32_t index) { ColorOfIndex(index); }

Variant InteriorObject::Pattern() {
  const auto ground = Ground();
  if (!ground) return {};
  return *ground == kAutomatic ? std::int32_t{xlPatternNone} : std::int32_t{xlPatternSolid};
}

void InteriorObject::Pattern(std::int32_t pattern) {
  if (pattern != xlPatternNone && pattern != xlPatternAutomatic && pattern != xlPatternSolid)
    throw Refusals::NotAPattern();
  const auto ground = Ground();
  const bool is_solid = pattern == xlPatternSolid;
  if (is_solid && ground && *ground != kAutomatic) return;
  FormatCells(block_, {{kGround, Any(is_solid ? kWhite : kAutomatic)}});
}

}  // namespace mirelo::calc
