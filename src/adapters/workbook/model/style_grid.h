#pragma once

#include <cstdint>
#include <utility>

#include "adapters/workbook/model/run_map.h"
#include "adapters/workbook/model/style_table.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"

namespace mirelo::workbook {

// The styles of a sheet's cells: runs of columns that look alike, each with its runs of rows. A formatted
// rectangle costs the same for ten rows and for a million.
class StyleGrid {
 public:
  using Rows = RunMap<StyleId>;

  StyleGrid() : columns_(kColumns, Rows(kRows, kDefaultStyle)) {}
  explicit StyleGrid(RunMap<Rows> columns) : columns_(std::move(columns)) {}

  StyleId At(std::int32_t row, std::int32_t column) const { return columns_.At(column).At(row); }
  const Rows& Column(std::int32_t column) const { return columns_.At(column); }

  // Replaces each style of the area by change(style).
  template <class Change>
  void Apply(const Area& area, Change&& change) {
    columns_.Apply(area.first_column, area.last_column, [&](Rows& rows) {
      rows.Apply(area.first_row, area.last_row, [&](StyleId& id) { id = change(id); });
    });
  }
  void Set(const Area& area, StyleId style) {
    Apply(area, [&](StyleId) { return style; });
  }

  // Takes the area's cells out; those below move up, and more of the last ones come in at the foot.
  void Delete(const Area& area) {
    columns_.Apply(area.first_column, area.last_column,
                   [&](Rows& rows) { rows.Remove(area.first_row, area.last_row); });
  }

  // Calls visit(part, style) for the parts of the area that have one style each.
  template <class Visit>
  void ForEach(const Area& area, Visit&& visit) const {
    columns_.ForEach(area.first_column, area.last_column,
                     [&](std::int32_t first_column, std::int32_t last_column, const Rows& rows) {
                       rows.ForEach(area.first_row, area.last_row,
                                    [&](std::int32_t first_row, std::int32_t last_row, StyleId style) {
                                      visit(Area{first_row, first_column, last_row, last_column}, style);
                                    });
                     });
  }

  // Calls visit(first_column, last_column, rows) for each run of columns; with numbers for the runs that
  // lie between these columns, cut to them.
  template <class Visit>
  void ForEachColumnRun(Visit&& visit) const {
    ForEachColumnRun(1, kColumns, visit);
  }
  template <class Visit>
  void ForEachColumnRun(std::int32_t first_column, std::int32_t last_column, Visit&& visit) const {
    columns_.ForEach(first_column, last_column, visit);
  }

  friend bool operator==(const StyleGrid&, const StyleGrid&) = default;

 private:
  RunMap<Rows> columns_;
};

}  // namespace mirelo::workbook
