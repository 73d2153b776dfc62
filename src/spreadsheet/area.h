#pragma once

#include <algorithm>
#include <compare>
#include <cstdint>
#include <optional>

namespace mirelo::spreadsheet {

// The size of a sheet, which is that of the file format.
inline constexpr std::int32_t kRows = 1'048'576;
inline constexpr std::int32_t kColumns = 16'384;

// One cell, counted from 1. In order, the cells of a row follow those of the row above.
struct CellPlace {
  std::int32_t row = 1;
  std::int32_t column = 1;
  // The linter takes the zero in the compiler's own comparison for a null pointer of ours.
  friend auto operator<=>(const CellPlace&, const CellPlace&) = default;  // NOLINT(modernize-use-nullptr)
};

// A rectangle of cells, counted from 1, both ends inside.
struct Area {
  std::int32_t first_row = 1;
  std::int32_t first_column = 1;
  std::int32_t last_row = 1;
  std::int32_t last_column = 1;

  static constexpr Area Cell(std::int32_t row, std::int32_t column) { return {row, column, row, column}; }
  static constexpr Area Sheet() { return {1, 1, kRows, kColumns}; }

  constexpr std::int32_t Rows() const { return last_row - first_row + 1; }
  constexpr std::int32_t Columns() const { return last_column - first_column + 1; }
  constexpr std::int64_t Cells() const { return std::int64_t{Rows()} * Columns(); }
  constexpr bool IsWholeColumns() const { return first_row == 1 && last_row == kRows; }
  constexpr bool IsWholeRows() const { return first_column == 1 && last_column == kColumns; }

  // Whether every cell of it lies on the sheet and the corners are in order.
  constexpr bool IsOnSheet() const {
    return 1 <= first_row && first_row <= last_row && last_row <= kRows &&  //
           1 <= first_column && first_column <= last_column && last_column <= kColumns;
  }

  constexpr bool Holds(std::int32_t row, std::int32_t column) const {
    return first_row <= row && row <= last_row && first_column <= column && column <= last_column;
  }

  friend bool operator==(const Area&, const Area&) = default;
};

// The cells that lie in both, if any do.
constexpr std::optional<Area> Shared(const Area& a, const Area& b) {
  const Area shared{std::max(a.first_row, b.first_row), std::max(a.first_column, b.first_column),
                    std::min(a.last_row, b.last_row), std::min(a.last_column, b.last_column)};
  if (shared.first_row > shared.last_row || shared.first_column > shared.last_column) return std::nullopt;
  return shared;
}

// The smallest area that holds both.
constexpr Area Around(const Area& a, const Area& b) {
  return {std::min(a.first_row, b.first_row), std::min(a.first_column, b.first_column),
          std::max(a.last_row, b.last_row), std::max(a.last_column, b.last_column)};
}

}  // namespace mirelo::spreadsheet
