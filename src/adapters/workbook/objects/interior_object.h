#pragma once

#include <cstdint>
#include <utility>

#include "adapters/workbook/objects/cell_block.h"
#include "host/excel/interior.h"

namespace mirelo::workbook {

class InteriorObject final : public host::excel::Interior {
 public:
  explicit InteriorObject(CellBlock block) : block_(std::move(block)) {}

  Variant ColorIndex() override;
  void ColorIndex(std::int32_t index) override;
  Variant Color() override;
  Variant PatternColorIndex() override;
  void PatternColorIndex(std::int32_t index) override;
  Variant Pattern() override;
  void Pattern(std::int32_t pattern) override;

 private:
  CellBlock block_;
};

}  // namespace mirelo::workbook
