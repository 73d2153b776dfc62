#pragma once

#include <cstdint>
#include <utility>

#include "adapters/calc/objects/cell_block.h"
#include "host/excel/font.h"

namespace mirelo::calc {

class FontObject final : public host::excel::Font {
 public:
  explicit FontObject(CellBlock block) : block_(std::move(block)) {}

  Variant Bold() override;
  void Bold(bool bold) override;
  Variant Size() override;
  void Size(double points) override;
  Variant ColorIndex() override;
  void ColorIndex(std::int32_t index) override;
  Variant Color() override;

 private:
  CellBlock block_;
};

}  // namespace mirelo::calc
