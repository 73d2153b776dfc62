#pragma once

#include <cstdint>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

// The font of a range's cells, or what a condition changes of it. Properties give an empty variant
// where the cells differ.
class Font : public Object {
 public:
  std::string_view TypeName() const override { return "Font"; }

  virtual Variant Bold() = 0;
  virtual void Bold(bool bold) = 0;

  // Points, 1 to 409; error 1004 outside, and of a condition, which leaves the size to the cells.
  virtual Variant Size() = 0;
  virtual void Size(double points) = 0;

  // 1 to 56 of the palette, or xlColorIndexAutomatic; error 1004 otherwise, but xlColorIndexNone and 0 are
  // taken as automatic. A colour outside the palette reads as the nearest of it.
  virtual Variant ColorIndex() = 0;
  virtual void ColorIndex(std::int32_t index) = 0;

  // The colour itself: red, and 256 times green, and 65536 times blue. Black for the automatic one.
  virtual Variant Color() = 0;
};

}  // namespace mirelo::host::excel
