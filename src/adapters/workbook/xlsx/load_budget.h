#pragma once

#include <cstddef>
#include <string_view>

#include "adapters/workbook/load_limits.h"
#include "adapters/workbook/xlsx/package.h"

namespace mirelo::workbook {

// What is left of the limits that all sheets of a file share.
class LoadBudget {
 public:
  explicit LoadBudget(const LoadLimits& limits)
      : cells_(limits.cells),
        blank_cells_(limits.blank_cells),
        text_bytes_(limits.text_bytes),
        format_runs_(limits.cells),
        charts_(limits.charts),
        series_(limits.chart_series),
        chart_points_(limits.chart_points) {}

  void TakeCell(std::string_view part) { Take(cells_, 1, part, "too many cells"); }
  void TakeBlankCell(std::string_view part) { Take(blank_cells_, 1, part, "too many formatted cells"); }
  void TakeText(std::size_t bytes, std::string_view part) { Take(text_bytes_, bytes, part, "too much text"); }
  void TakeFormatRuns(std::size_t runs, std::string_view part) {
    Take(format_runs_, runs, part, "too many formats");
  }
  void TakeChart(std::string_view part) { Take(charts_, 1, part, "too many charts"); }
  void TakeSeries(std::string_view part) { Take(series_, 1, part, "too many series of charts"); }
  void TakeChartPoints(std::size_t points, std::string_view part) {
    Take(chart_points_, points, part, "too many points of charts with a look of their own");
  }

 private:
  static void Take(std::size_t& left, std::size_t amount, std::string_view part, std::string_view what) {
    if (amount > left) throw Damaged(part, what);
    left -= amount;
  }

  std::size_t cells_;
  std::size_t blank_cells_;
  std::size_t text_bytes_;
  std::size_t format_runs_;
  std::size_t charts_;
  std::size_t series_;
  std::size_t chart_points_;
};

}  // namespace mirelo::workbook
