#include "adapters/workbook/xlsx/style_layers.h"

#include <utility>

namespace mirelo::workbook {

void StyleLayers::SetColumns(std::int32_t first, std::int32_t last, StyleId style) {
  columns_.push_back({first, last, style});
}

void StyleLayers::SetRow(std::int32_t row, StyleId style) { Append(rows_, row, style); }

void StyleLayers::SetCell(std::int32_t row, std::int32_t column, StyleId style) {
  Append(cells_[column], row, style);
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

  std::vector<RunMap<Rows>::Patch> with_cells;
  for (const auto& [column, patches] : cells_) {
    with_cells.push_back({column, column, lay(columns.At(column), patches)});
  }
  return StyleGrid(RunMap<Rows>::Overlay(columns, with_cells));
}

}  // namespace mirelo::workbook
