#pragma once

#include <cstdint>

#include "automation/variant.h"

namespace mirelo::day {

// The array of a block of cells that is to be written. Blocks are small and come by the thousand, so
// each is filled into the array of the one before, where that has the same size and nobody else holds it.
class CellBuffer {
 public:
  // Cells, counted from 1, all of which are to be filled.
  VariantArray& Renew(std::int32_t height, std::int32_t width) {
    if (!IsOfSize(height, width)) block_ = VariantArray(1, height, 1, width);
    return block_.AsArray();
  }

  // What was filled in. It stays as it is when the buffer is renewed.
  Variant Block() const { return block_; }

 private:
  bool IsOfSize(std::int32_t height, std::int32_t width) const {
    if (block_.IsEmpty()) return false;
    const VariantArray& cells = block_.AsArray();
    return cells.UBound(1) == height && cells.UBound(2) == width;
  }

  Variant block_;
};

}  // namespace mirelo::day
