// The palette: the cell for no colour above eight columns of five.

#include "adapters/qt/layouts.h"

namespace mirelo::qt {

FormLayout LayoutOfColorDialog() {
  constexpr int kColors = 40;
  constexpr int kRows = 5;
  std::vector<Part> cells;
  for (int cell = 1; cell <= kColors; ++cell) cells.push_back(Control("L1(" + std::to_string(cell) + ")"));
  return {{"C1ElasticColor", Column({Control("L1(0)"), Wide(Palette(std::move(cells), kRows))})}};
}

}  // namespace mirelo::qt
