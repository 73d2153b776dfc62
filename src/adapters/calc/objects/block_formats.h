#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "adapters/calc/objects/cell_block.h"
#include "adapters/calc/objects/number_formats.h"

namespace mirelo::calc {

// The number formats of a block's cells, asked for when one is wanted, and as few times as they differ: for
// all cells at once, else by columns, else cell by cell.
class BlockFormats {
 public:
  explicit BlockFormats(CellBlock block) : block_(std::move(block)) {}

  const NumberFormats::Format& At(std::int32_t row, std::int32_t column);

 private:
  void Read();

  CellBlock block_;
  bool is_read_ = false;
  const NumberFormats::Format* all_ = nullptr;
  std::vector<const NumberFormats::Format*> columns_;  // null where the cells differ
};

}  // namespace mirelo::calc
