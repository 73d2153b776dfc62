#pragma once

#include <xlsxwriter.h>

#include <filesystem>
#include <memory>
#include <vector>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// The file writer has no gradients for charts, no markers of single points and no names. So charts are
// written in two steps: first it writes empty charts, by which the parts that charts need are there, named
// and referred to; then, once the file is whole, WriteCharts replaces the text of these parts.

// The first step, for a sheet: lays as many empty charts on it as it has.
void ReserveCharts(const Sheet& sheet, lxw_workbook* workbook, lxw_worksheet* worksheet);

// The first step for chart sheets: adds those of the book behind all other sheets.
void ReserveChartSheets(const Book& book, lxw_workbook* workbook);

// The second step: puts the charts into the file. `sheets` and `chart_sheets` of the book are those that the
// file holds, all of them. Does nothing when there are no charts.
void WriteCharts(const Book& book, const std::vector<std::shared_ptr<Sheet>>& sheets,
                 const std::vector<std::shared_ptr<Chart>>& chart_sheets, const std::filesystem::path& file);

}  // namespace mirelo::workbook
