#include "adapters/windows/views/grid_places.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace mirelo::windows {

std::int32_t GridPlaces::Sum(std::int32_t from, std::int32_t to) const {
  std::int32_t sum = 0;
  for (std::int32_t col = from; col < to; ++col) sum += widths[static_cast<std::size_t>(col)];
  return sum;
}

forms::layout::Place GridPlaces::PlaceOf(std::int32_t row, std::int32_t col) const {
  const std::int32_t left = Sum(0, col) - (col < fixed_cols ? 0 : offset);
  const std::int32_t top = (row < fixed_rows ? row : row - first_row) * row_height;
  return {left, top, widths[static_cast<std::size_t>(col)], row_height};
}

std::optional<GridPlaces::Cell> GridPlaces::CellAt(std::int32_t x, std::int32_t y) const {
  if (x < 0 || y < 0) return std::nullopt;
  const std::int32_t line = y / row_height;
  const std::int32_t row = line < fixed_rows ? line : line + first_row;
  if (row >= rows) return std::nullopt;
  const bool is_fixed = x < FixedWidth();
  for (std::int32_t col = is_fixed ? 0 : fixed_cols; col < Cols(); ++col) {
    const auto place = PlaceOf(row, col);
    if (x >= place.left && x < place.left + place.width) return Cell{row, col};
  }
  return std::nullopt;
}

std::optional<std::int32_t> GridPlaces::EdgeAt(std::int32_t x, std::int32_t y, std::int32_t reach) const {
  if (fixed_rows == 0 || y < 0 || y >= row_height) return std::nullopt;
  for (std::int32_t col = Cols() - 1; col >= fixed_cols; --col) {
    const auto place = PlaceOf(0, col);
    const std::int32_t edge = place.left + place.width;
    if (edge < FixedWidth()) continue;
    if (std::abs(x - edge) <= reach) return col;
  }
  return std::nullopt;
}

std::int32_t GridPlaces::RowsSeen() const {
  return std::max<std::int32_t>(1, room.height / row_height - fixed_rows);
}

std::int32_t GridPlaces::LastFirstRow() const {
  return std::max<std::int32_t>(0, rows - fixed_rows - RowsSeen());
}

std::int32_t GridPlaces::LastOffset() const { return std::max<std::int32_t>(0, Sum(0, Cols()) - room.width); }

void GridPlaces::Reveal(std::int32_t row, std::int32_t col) {
  if (row >= fixed_rows) {
    const std::int32_t scrolled = row - fixed_rows;
    first_row = std::clamp(first_row, scrolled - RowsSeen() + 1, scrolled);
  }
  if (col >= fixed_cols && col < Cols()) {
    const std::int32_t left = Sum(fixed_cols, col);
    const std::int32_t most = std::max<std::int32_t>(0, room.width - FixedWidth());
    const std::int32_t right = left + widths[static_cast<std::size_t>(col)] - most;
    offset = std::min(std::max(offset, right), left);
  }
  KeepInside();
}

void GridPlaces::KeepInside() {
  first_row = std::clamp<std::int32_t>(first_row, 0, LastFirstRow());
  offset = std::clamp<std::int32_t>(offset, 0, LastOffset());
}

}  // namespace mirelo::windows
