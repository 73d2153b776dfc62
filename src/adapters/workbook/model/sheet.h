#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "adapters/workbook/model/cell_grid.h"
#include "adapters/workbook/model/comment.h"
#include "adapters/workbook/model/condition.h"
#include "adapters/workbook/model/run_map.h"
#include "adapters/workbook/model/style_grid.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::workbook {

// A column's width in pixels of a 96 dpi screen.
struct ColumnWidth {
  static constexpr std::int32_t kStandardPixels = 64;    // 8.43 digits of the standard font
  static constexpr std::int32_t kGreatestPixels = 1790;  // kMostDigits
  std::int32_t pixels = kStandardPixels;
  bool hidden = false;
  friend bool operator==(const ColumnWidth&, const ColumnWidth&) = default;
};

// A row's height in points; 0 is the standard height.
struct RowHeight {
  double points = 0;
  bool hidden = false;
  friend bool operator==(const RowHeight&, const RowHeight&) = default;
};

// One worksheet.
struct Sheet final : CellSource {
  explicit Sheet(std::string sheet_name) : name(std::move(sheet_name)) {}

  std::string name;
  bool hidden = false;
  CellGrid cells;
  StyleGrid styles;
  Comments comments;
  Conditions conditions;
  SheetCharts charts;
  RunMap<ColumnWidth> widths{kColumns, {}};
  RunMap<RowHeight> heights{kRows, {}};
  std::int32_t frozen_rows = 0;  // kept in view at the top
  std::int32_t frozen_columns = 0;
  Area selection;
  CellPlace active_cell;  // within the selection
  // What is selected instead of the cells, at most one of the two.
  std::weak_ptr<Chart> selected_chart;
  std::weak_ptr<Comment> selected_comment;

  // Takes the area's cells out of the sheet; those below move up.
  void Delete(const Area& area);

  void ForEachNumber(
      const Area& area,
      const std::function<void(std::int32_t row, std::int32_t column, double number)>& visit) const override;
};

// The sheet on which the cells of a series lie; null when it is gone.
inline std::shared_ptr<Sheet> SheetOf(const ChartSeries& series) {
  return std::static_pointer_cast<Sheet>(series.sheet.lock());
}

}  // namespace mirelo::workbook
