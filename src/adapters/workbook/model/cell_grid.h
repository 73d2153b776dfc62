#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "adapters/workbook/model/cell_column.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"
#include "spreadsheet/cell_value.h"

namespace mirelo::workbook {

// The values of a sheet's cells, column by column.
class CellGrid {
 public:
  // Null for an empty cell.
  const CellValue* Find(std::int32_t row, std::int32_t column) const;
  bool IsFilled(std::int32_t row, std::int32_t column) const { return Find(row, column) != nullptr; }
  std::size_t Count() const;
  // From the first to the last filled row and column; A1 when none is.
  Area Extent() const;

  // An empty value clears the cell.
  void Set(std::int32_t row, std::int32_t column, CellValue value);
  void Clear(const Area& area);
  // Takes the area's cells out; those below move up.
  void Delete(const Area& area);

  // Lets change(CellColumn&) write into the column, which may have had no cells and may have none afterwards.
  template <class Change>
  void ChangeColumn(std::int32_t column, Change&& change) {
    const auto place = columns_.try_emplace(column).first;
    change(place->second);
    if (place->second.IsEmpty()) columns_.erase(place);
  }

  // Calls visit(row, column, value) for the filled cells of the area, down each column, from left to right.
  template <class Visit>
  void ForEach(const Area& area, Visit&& visit) const {
    for (auto it = columns_.lower_bound(area.first_column);
         it != columns_.end() && it->first <= area.last_column; ++it) {
      it->second.ForEach(area.first_row, area.last_row,
                         [&](std::int32_t row, const CellValue& value) { visit(row, it->first, value); });
    }
  }

  // Where the end key leads from a cell in each direction: see host::excel::Range::End. Row or column number.
  std::int32_t EndDown(std::int32_t row, std::int32_t column) const;
  std::int32_t EndUp(std::int32_t row, std::int32_t column) const;
  std::int32_t EndRight(std::int32_t row, std::int32_t column) const;
  std::int32_t EndLeft(std::int32_t row, std::int32_t column) const;

 private:
  std::map<std::int32_t, CellColumn> columns_;
};

}  // namespace mirelo::workbook
