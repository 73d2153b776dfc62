// The palette: the cell for no colour above eight columns of five.

#include "forms/layout/layouts.h"

namespace mirelo::forms::layout {

FormLayout LayoutOfColorDialog() {
  constexpr int kColors = 40;
  constexpr int kRows = 5;
  std::vector<Part> cells;
  for (int cell = 1; cell <= kColors; ++cell) cells.push_back(Control("L1(" + std::to_string(cell) + ")"));
  // The window comes up with the focus on the cell for no colour, and what is taken is stored at once: who
  // presses Enter to be rid of the window must not lose the colour by that.
  return {{"C1ElasticColor", Column({Asking(Control("L1(0)"), "Use no fill color?"),
                                     Wide(Palette(std::move(cells), kRows, "L1(0)"))})}};
}

}  // namespace mirelo::forms::layout
