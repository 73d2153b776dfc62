#include "adapters/workbook/xlsx/chart_parts.h"

#include <cstddef>
#include <map>
#include <string>

#include "adapters/workbook/errors.h"
#include "adapters/workbook/xlsx/chart_writer.h"
#include "adapters/workbook/xlsx/drawing_writer.h"
#include "adapters/workbook/xlsx/part_replacer.h"
#include "adapters/workbook/xlsx/writer_error.h"

namespace mirelo::workbook {

void ReserveCharts(const Sheet& sheet, lxw_workbook* workbook, lxw_worksheet* worksheet) {
  for (std::size_t i = 0; i < sheet.charts.all.size(); ++i) {
    lxw_chart* chart = workbook_add_chart(workbook, LXW_CHART_COLUMN);
    lxw_chart_series* series = chart == nullptr ? nullptr : chart_add_series(chart, nullptr, nullptr);
    if (series == nullptr) throw Errors::OutOfMemory();
    chart_series_set_values(series, sheet.name.c_str(), 0, 0, 0, 0);  // it takes no chart without any cells
    CheckWriter(worksheet_insert_chart(worksheet, 0, 0, chart));
  }
}

void WriteCharts(const Book& book, const std::filesystem::path& file) {
  std::map<std::string, std::string> parts;
  std::size_t drawings = 0;
  std::size_t charts = 0;
  for (const auto& sheet : book.sheets) {  // in the order in which the writer numbers them
    if (sheet->charts.all.empty()) continue;
    parts["xl/drawings/drawing" + std::to_string(++drawings) + ".xml"] = DrawingXml(*sheet);
    for (const auto& chart : sheet->charts.all)
      parts["xl/charts/chart" + std::to_string(++charts) + ".xml"] = ChartXml(*chart, book);
  }
  if (!parts.empty()) ReplaceParts(file, parts);
}

}  // namespace mirelo::workbook
