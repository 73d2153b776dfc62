#pragma once

#include <cstdint>
#include <utility>

#include "adapters/workbook/objects/border_lines.h"
#include "host/excel/border.h"

namespace mirelo::workbook {

class BorderObject final : public host::excel::Border {
 public:
  explicit BorderObject(BorderLines lines) : lines_(std::move(lines)) {}

  Variant LineStyle() override;
  void LineStyle(std::int32_t style) override;
  Variant Weight() override;
  void Weight(std::int32_t weight) override;
  Variant ColorIndex() override;
  void ColorIndex(std::int32_t index) override;

 private:
  BorderLines lines_;
};

}  // namespace mirelo::workbook
