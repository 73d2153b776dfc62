#include "adapters/workbook/model/cell_grid.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace mirelo::workbook {

const CellValue* CellGrid::Find(std::int32_t row, std::int32_t column) const {
  const auto found = columns_.find(column);
  return found == columns_.end() ? nullptr : found->second.Find(row);
}

std::size_t CellGrid::Count() const {
  std::size_t count = 0;
  for (const auto& [number, column] : columns_) count += column.Count();
  return count;
}

Area CellGrid::Extent() const {
  if (columns_.empty()) return Area::Cell(1, 1);
  Area extent{kRows, columns_.begin()->first, 1, columns_.rbegin()->first};
  for (const auto& [number, column] : columns_) {
    extent.first_row = std::min(extent.first_row, column.NextFilled(1));
    extent.last_row = std::max(extent.last_row, column.PreviousFilled(kRows));
  }
  return extent;
}

void CellGrid::Set(std::int32_t row, std::int32_t column, CellValue value) {
  if (value.IsEmpty()) return Clear(Area::Cell(row, column));
  columns_[column].Set(row, std::move(value));
}

void CellGrid::Clear(const Area& area) {
  auto it = columns_.lower_bound(area.first_column);
  while (it != columns_.end() && it->first <= area.last_column) {
    it->second.Clear(area.first_row, area.last_row);
    it = it->second.IsEmpty() ? columns_.erase(it) : std::next(it);
  }
}

void CellGrid::Delete(const Area& area) {
  auto it = columns_.lower_bound(area.first_column);
  while (it != columns_.end() && it->first <= area.last_column) {
    it->second.Delete(area.first_row, area.last_row);
    it = it->second.IsEmpty() ? columns_.erase(it) : std::next(it);
  }
}

std::int32_t CellGrid::EndDown(std::int32_t row, std::int32_t column) const {
  const auto found = columns_.find(column);
  if (found == columns_.end() || row == kRows) return kRows;
  const CellColumn& cells = found->second;
  if (cells.IsFilled(row) && cells.IsFilled(row + 1)) return cells.EndOfRun(row);
  const std::int32_t next = cells.NextFilled(row + 1);
  return next != 0 ? next : kRows;
}

std::int32_t CellGrid::EndUp(std::int32_t row, std::int32_t column) const {
  const auto found = columns_.find(column);
  if (found == columns_.end() || row == 1) return 1;
  const CellColumn& cells = found->second;
  if (cells.IsFilled(row) && cells.IsFilled(row - 1)) return cells.StartOfRun(row);
  const std::int32_t next = cells.PreviousFilled(row - 1);
  return next != 0 ? next : 1;
}

std::int32_t CellGrid::EndRight(std::int32_t row, std::int32_t column) const {
  if (column == kColumns) return kColumns;
  if (IsFilled(row, column) && IsFilled(row, column + 1)) {
    std::int32_t last = column + 1;
    auto it = columns_.find(last);
    while (it != columns_.end() && it->first == last && it->second.IsFilled(row)) ++it, ++last;
    return last - 1;
  }
  for (auto it = columns_.upper_bound(column); it != columns_.end(); ++it) {
    if (it->second.IsFilled(row)) return it->first;
  }
  return kColumns;
}

std::int32_t CellGrid::EndLeft(std::int32_t row, std::int32_t column) const {
  if (column == 1) return 1;
  if (IsFilled(row, column) && IsFilled(row, column - 1)) {
    std::int32_t first = column - 1;
    while (first > 1 && IsFilled(row, first - 1)) --first;
    return first;
  }
  for (auto it = columns_.lower_bound(column); it != columns_.begin();) {
    --it;
    if (it->second.IsFilled(row)) return it->first;
  }
  return 1;
}

}  // namespace mirelo::workbook
