#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "adapters/calc/objects/cell_block.h"
#include "host/excel/interior.h"
#include "spreadsheet/style.h"

namespace mirelo::calc {

// The fill of cells. Calc fills them with one colour and no pattern: a pattern's colour is accepted and
// ignored.
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
  // Nothing where the cells differ; kAutomatic where there is no fill.
  std::optional<spreadsheet::Color> BackgroundColor() const;

  CellBlock block_;
};

}  // namespace mirelo::calc
