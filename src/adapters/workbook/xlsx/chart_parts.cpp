#include "adapters/workbook/xlsx/chart_parts.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_writer.h"
#include "adapters/workbook/xlsx/drawing_writer.h"
#include "adapters/workbook/xlsx/part_replacer.h"
#include "adapters/workbook/xlsx/writer_error.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace {

lxw_chart* AddChart(lxw_workbook* workbook, const std::string& sheet) {
  lxw_chart* chart = workbook_add_chart(workbook, LXW_CHART_COLUMN);
  lxw_chart_series* series = chart == nullptr ? nullptr : chart_add_series(chart, nullptr, nullptr);
  if (series == nullptr) throw Errors::OutOfMemory();
  chart_series_set_values(series, sheet.c_str(), 0, 0, 0, 0);  // it takes no chart without any cells
  return chart;
}

// The parts by their names, which the writer numbers in the order of the sheets.
class ChartParts {
 public:
  explicit ChartParts(const Book& book) : book_(book) {}

  void AddDrawing(std::string text) {
    all_["xl/drawings/drawing" + std::to_string(++drawings_) + ".xml"] = std::move(text);
  }
  void AddChart(const Chart& chart) {
    all_["xl/charts/chart" + std::to_string(++charts_) + ".xml"] = ChartXml(chart, book_);
  }
  const std::map<std::string, std::string>& all() const { return all_; }

 private:
  const Book& book_;
  std::map<std::string, std::string> all_;
  std::size_t drawings_ = 0;
  std::size_t charts_ = 0;
};

}  // namespace

void ReserveCharts(const Sheet& sheet, lxw_workbook* workbook, lxw_worksheet* worksheet) {
  for (std::size_t i = 0; i < sheet.charts.all.size(); ++i)
    CheckWriter(worksheet_insert_chart(worksheet, 0, 0, AddChart(workbook, sheet.name)));
}

void ReserveChartSheets(const Book& book, lxw_workbook* workbook) {
  for (const auto& chart : book.chart_sheets) {
    lxw_chartsheet* sheet = workbook_add_chartsheet(workbook, chart->name.c_str());
    if (sheet == nullptr) throw Refused("The chart sheet \"" + chart->name + "\" cannot be written.");
    CheckWriter(chartsheet_set_chart(sheet, AddChart(workbook, book.sheets.front()->name)));
    if (chart == book.front_chart) chartsheet_activate(sheet);
  }
}

void WriteCharts(const Book& book, const std::vector<std::shared_ptr<Sheet>>& sheets,
                 const std::vector<std::shared_ptr<Chart>>& chart_sheets, const std::filesystem::path& file) {
  ChartParts parts(book);
  for (const auto& sheet : sheets) {
    if (sheet->charts.all.empty()) continue;
    parts.AddDrawing(DrawingXml(*sheet));
    for (const auto& chart : sheet->charts.all) parts.AddChart(*chart);
  }
  for (const auto& chart : chart_sheets) {
    parts.AddDrawing(DrawingXml(*chart));
    parts.AddChart(*chart);
  }
  if (!parts.all().empty()) ReplaceParts(file, parts.all());
}

}  // namespace mirelo::workbook
