#include "adapters/workbook/xlsx/style_layers.h"

#include <utility>

#include "adapters/workbook/xlsx/told_styles.h"

namespace mirelo::workbook {

void StyleLayers::SetColumns(std::int32_t first, std::int32_t last, StyleId style) {
  columns_.push_back({first, last, style});
}

void StyleLayers::SetRow(std::int32_t row, StyleId style) { Append(rows_, row, style); }

void StyleLayers::SetCell(std::int32_t row, std::int32_t column, StyleId style, bool is_empty) {
  ToldColumn& told = cells_[column];
  Append(told.patches, row, style);
  told.before = std::exchange(told.last, {row, style, is_empty});
}

void StyleLayers::Append(Patches& patches, std::int32_t row, StyleId style) {
  if (!patches.empty() && patches.back().last == row - 1 && patches.back().value == style) {
    patches.back().last = row;
  } else {
    patches.push_back({row, row, style});
  }
}

StyleGrid StyleLayers::Build(LoadBudget& budget, const std::string& part) const {
  const auto lay = [&](const Rows& base, const Patches& patches) {
    budget.TakeFormatRuns(base.RunCount() + 2 * patches.size() + 1, part);
    return Rows::Overlay(base, patches);
  };

  RunMap<Rows> columns(kColumns, lay(Rows(kRows, kDefaultStyle), rows_));
  for (const auto& [first, last, style] : columns_) columns.Set(first, last, lay(Rows(kRows, style), rows_));

  const auto lay_column = [&](const Rows& base, const ToldColumn& told) {
    if (MayBeAnEnd(told.before, told.last, base)) {
      Patches patches = told.patches;
      patches.push_back({told.last.row + 1, kRows, told.last.style});
      Rows ended = lay(base, patches);
      if (IsToldByItsEnd(ended, told.before.row, table_)) return ended;
    }
    return lay(base, told.patches);
  };
  std::vector<RunMap<Rows>::Patch> with_cells;
  for (const auto& [column, told] : cells_) {
    with_cells.push_back({column, column, lay_column(columns.At(column), told)});
  }
  return StyleGrid(RunMap<Rows>::Overlay(columns, with_cells));
}

// The first of the two has the column's format, so nobody else would tell it.
bool StyleLayers::MayBeAnEnd(const ToldCell& before, const ToldCell& last, const Rows& column) const {
  const bool have_rows_formats_below = !rows_.empty() && rows_.back().last >= before.row;
  return before.is_empty && last.is_empty && last.row == before.row + 1 && last.row < kRows &&
         !have_rows_formats_below && before.style == column.At(kRows) && last.style != before.style;
}

}  // namespace mirelo::workbook
