#pragma once

#include <memory>
#include <utility>

#include "adapters/calc/objects/cell_block.h"
#include "host/excel/display_format.h"

namespace mirelo::calc {

// How a cell is shown. The office tells nobody, so the first condition that its value meets is looked for
// here, as Calc looks: a text is unequal to any number and nothing else, and of several conditions that are
// met the first alone counts. Conditions that are formulas are taken as not met.
class DisplayFormatObject final : public host::excel::DisplayFormat {
 public:
  explicit DisplayFormatObject(CellBlock cell) : cell_(std::move(cell)) {}

  std::shared_ptr<host::excel::Font> Font() override;
  std::shared_ptr<host::excel::Interior> Interior() override;

 private:
  CellBlock cell_;
};

}  // namespace mirelo::calc
