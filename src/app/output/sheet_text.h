#pragma once

#include <cstddef>

#include "app/output/shown_cells.h"
#include "terminal/color.h"
#include "terminal/shown_text.h"

namespace mirelo::app {

// Cells as lines of text, under the letters of their columns and beside the numbers of their rows.
struct SheetText {
  terminal::ShownText text;  // lines ended by "\n"
  std::size_t columns = 0;   // of the sheet that found room, the first ones; at least 1
};

// `width` is that of a line; 0 stands for as much as it takes. With a width, columns of more than 40
// characters are cut there. Blanks at the ends of lines without colours are left out.
SheetText LayOut(const ShownCells& cells, std::size_t width, terminal::ColorDepth depth);

}  // namespace mirelo::app
