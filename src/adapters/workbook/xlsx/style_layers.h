#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "adapters/workbook/model/style_grid.h"
#include "adapters/workbook/model/style_table.h"
#include "adapters/workbook/xlsx/load_budget.h"

namespace mirelo::workbook {

// The formats of a sheet as a file tells them: those of columns, over them those of rows, over both those of
// cells. Where two empty cells at a column's foot are a mark of ToldStyles, the column's format ends with the
// upper one.
class StyleLayers {
 public:
  // The table must outlive this.
  explicit StyleLayers(const StyleTable& table) : table_(table) {}

  void SetColumns(std::int32_t first, std::int32_t last, StyleId style);
  // Rows in ascending order.
  void SetRow(std::int32_t row, StyleId style);
  // Cells of a column in ascending order.
  void SetCell(std::int32_t row, std::int32_t column, StyleId style, bool is_empty);

  // Lays them over each other. Takes the runs that this makes from the budget.
  StyleGrid Build(LoadBudget& budget, const std::string& part) const;

 private:
  using Rows = StyleGrid::Rows;
  using Patches = std::vector<Rows::Patch>;

  static void Append(Patches& patches, std::int32_t row, StyleId style);

  struct ColumnStyle {
    std::int32_t first;
    std::int32_t last;
    StyleId style;
  };
  std::vector<ColumnStyle> columns_;
  struct ToldCell {
    std::int32_t row = 0;
    StyleId style = kDefaultStyle;
    bool is_empty = false;
  };
  struct ToldColumn {
    Patches patches;
    ToldCell before;  // the last cell but one
    ToldCell last;
  };
  bool MayBeAnEnd(const ToldCell& before, const ToldCell& last, const Rows& column) const;

  const StyleTable& table_;
  Patches rows_;
  std::map<std::int32_t, ToldColumn> cells_;  // by column
};

}  // namespace mirelo::workbook
