#include "dialog/grid_columns.h"

#include "automation/text.h"

namespace mirelo {

std::int32_t FindField(Frame& frame, const forms::Grid& grid, std::string_view header) {
  for (const std::int32_t col : frame.loop([&] { return Bounds{kFirstField, grid.Cols() - 1}; })) {
    if (frame.test([&] { return IsHeaderOf(grid, col, header); })) return col;
  }
  return kNoColumn;
}

ChartFields FindChartFields(Frame& frame, const forms::Grid& grid) {
  return {FindField(frame, grid, kLastHeader), FindField(frame, grid, kLastVolumeHeader)};
}

bool IsHeaderOf(const forms::Grid& grid, std::int32_t col, std::string_view header) {
  return EqualText(grid.TextMatrix(0, col), header);
}

}  // namespace mirelo
