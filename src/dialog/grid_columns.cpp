#include "dialog/grid_columns.h"

#include "automation/text.h"

namespace mirelo {

std::int32_t FindField(Frame& frame, const forms::Grid& grid, std::string_view header) {
  for (const std::int32_t col : frame.loop([&] { return Bounds{kFirstField, grid.Cols() - 1}; })) {
    if (frame.test([&] { return EqualText(grid.TextMatrix(0, col), header); })) return col;
  }
  return kNoColumn;
}

}  // namespace mirelo
