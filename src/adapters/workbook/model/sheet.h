#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "adapters/workbook/model/cell_grid.h"
#include "adapters/workbook/model/chart.h"
#include "adapters/workbook/model/comment.h"
#include "adapters/workbook/model/condition.h"
#include "adapters/workbook/model/run_map.h"
#include "adapters/workbook/model/style_grid.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"

namespace mirelo::workbook {

// A column's width in pixels of a 96 dpi screen.
struct ColumnWidth {
  static constexpr std::int32_t kStandardPixels = 64;    // 8.43 digits of the standard font
  static constexpr std::int32_t kGreatestPixels = 1790;  // 255 digits
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
struct Sheet {
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
};

}  // namespace mirelo::workbook
