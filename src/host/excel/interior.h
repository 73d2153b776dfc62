#pragma once

#include <cstdint>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

// The fill of a range's cells. Properties give an empty variant where the cells differ.
class Interior : public Object {
 public:
  std::string_view TypeName() const override { return "Interior"; }

  // 1 to 56 of the palette, or xlColorIndexNone; error 1004 otherwise, but xlColorIndexAutomatic and 0 are
  // taken as no fill. A colour outside the palette reads as the nearest of it.
  virtual Variant ColorIndex() = 0;
  virtual void ColorIndex(std::int32_t index) = 0;

  // The colour itself: red, and 256 times green, and 65536 times blue. White where there is no fill.
  virtual Variant Color() = 0;

  // The colour of a pattern's lines: 1 to 56 or xlColorIndexAutomatic; error 1004 otherwise, but
  // xlColorIndexNone and 0 are taken as automatic. A solid fill keeps the colour and does not show it; cells
  // without a fill drop it.
  virtual Variant PatternColorIndex() = 0;
  virtual void PatternColorIndex(std::int32_t index) = 0;

  // An XlPattern; error 1004 for other numbers. Of cells, xlPatternAutomatic is taken as no fill, and a
  // pattern that is none of them reads as xlPatternAutomatic.
  virtual Variant Pattern() = 0;
  virtual void Pattern(std::int32_t pattern) = 0;
};

}  // namespace mirelo::host::excel
