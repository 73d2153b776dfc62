#pragma once

#include <xlsxwriter.h>

#include <filesystem>
#include <memory>
#include <vector>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// The file writer has no gradients for charts, no markers of single points and no names. So it makes the
// parts that charts need, their names and what refers to them, with charts that say nothing; and once the
// file is whole, what stands in these parts is written anew.

// Lays charts that say nothing on a sheet, as many as it has.
void ReserveCharts(const Sheet& sheet, lxw_workbook* workbook, lxw_worksheet* worksheet);

// Adds the book's chart sheets behind all others.
void ReserveChartSheets(const Book& book, lxw_workbook* workbook);

// Puts the charts into the file: those of these sheets and chart sheets of the book, which are all that the
// file holds. Does nothing when there are none.
void WriteCharts(const Book& book, const std::vector<std::shared_ptr<Sheet>>& sheets,
                 const std::vector<std::shared_ptr<Chart>>& chart_sheets, const std::filesystem::path& file);

}  // namespace mirelo::workbook
