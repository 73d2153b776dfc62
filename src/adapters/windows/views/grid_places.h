#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "forms/layout/boxes.h"

namespace mirelo::windows {

// Where the cells of a grid lie in its window, in pixels. The header row and the fixed columns stay; the
// other rows are scrolled by whole rows, the other columns by pixels.
class GridPlaces {
 public:
  struct Cell {
    std::int32_t row = -1;
    std::int32_t col = -1;
    friend bool operator==(const Cell&, const Cell&) = default;
  };

  std::vector<std::int32_t> widths;  // of all columns
  std::int32_t row_height = 1;
  std::int32_t rows = 0;
  std::int32_t fixed_rows = 0;
  std::int32_t fixed_cols = 0;
  std::int32_t first_row = 0;  // the rows behind the fixed ones that are scrolled away
  std::int32_t offset = 0;     // the pixels of columns that are
  forms::layout::Extent room;

  // May lie outside of the room, or below the fixed cells.
  forms::layout::Place PlaceOf(std::int32_t row, std::int32_t col) const;
  std::optional<Cell> CellAt(std::int32_t x, std::int32_t y) const;
  // The column whose right edge is taken at this place of the header, within `reach`. Fixed columns have
  // none.
  std::optional<std::int32_t> EdgeAt(std::int32_t x, std::int32_t y, std::int32_t reach) const;

  // How many rows behind the fixed ones are seen whole, at least 1.
  std::int32_t RowsSeen() const;
  std::int32_t LastFirstRow() const;
  std::int32_t LastOffset() const;
  // Scrolls as little as it takes to see a cell.
  void Reveal(std::int32_t row, std::int32_t col);
  // Back to where there is something to see.
  void KeepInside();

 private:
  std::int32_t Sum(std::int32_t from, std::int32_t to) const;
  std::int32_t FixedWidth() const { return Sum(0, fixed_cols); }
  std::int32_t Cols() const { return static_cast<std::int32_t>(widths.size()); }
};

}  // namespace mirelo::windows
