#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "adapters/workbook/model/style_grid.h"

namespace mirelo::workbook {

// The formats of a sheet as a file tells them: of whole columns, of whole rows, and of single empty cells
// where neither holds.
class SheetFormats {
 public:
  explicit SheetFormats(const StyleGrid& styles);

  struct Columns {
    std::int32_t first;
    std::int32_t last;
    StyleId style;  // of most of their cells
    const StyleGrid::Rows* rows;
  };
  const std::vector<Columns>& columns() const { return columns_; }

  // Rows whose format reaches the sheet's right edge and is not that of the columns there.
  struct Rows {
    std::int32_t first;
    std::int32_t last;
    StyleId style;
  };
  const std::vector<Rows>& rows() const { return rows_; }

  // How many cells are exceptions: their format is not the one that their row and column give them.
  std::int64_t CountExceptions() const;

  // Calls visit(area, style) for the cells among them that lie in these rows.
  template <class Visit>
  void ForEachException(std::int32_t first_row, std::int32_t last_row, Visit&& visit) const {
    for (const Columns& columns : columns_) {
      columns.rows->ForEach(first_row, last_row, [&](std::int32_t first, std::int32_t last, StyleId style) {
        ForEachGiven(first, last, columns.style,
                     [&](std::int32_t part_first, std::int32_t part_last, StyleId given) {
                       if (style != given)
                         visit(Area{part_first, columns.first, part_last, columns.last}, style);
                     });
      });
    }
  }

 private:
  // Calls visit(first, last, style) for the formats that these rows give to the cells of a column: the row's
  // own, or the column's where the row has none.
  template <class Visit>
  void ForEachGiven(std::int32_t first, std::int32_t last, StyleId of_column, Visit&& visit) const {
    auto row = by_last_row_.lower_bound(first);
    while (first <= last) {
      if (row == by_last_row_.end() || row->second.first > last) return visit(first, last, of_column);
      if (row->second.first > first) visit(first, row->second.first - 1, of_column);
      const std::int32_t end = row->first < last ? row->first : last;
      visit(row->second.first > first ? row->second.first : first, end, row->second.style);
      first = end + 1;
      ++row;
    }
  }

  std::vector<Columns> columns_;
  std::vector<Rows> rows_;
  std::map<std::int32_t, Rows> by_last_row_;
};

}  // namespace mirelo::workbook
