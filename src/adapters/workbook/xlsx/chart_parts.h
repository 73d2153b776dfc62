#pragma once

#include <xlsxwriter.h>

#include <filesystem>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// The file writer has no gradients for charts, no markers of single points and no names. So it makes the
// parts that charts need, their names and what refers to them, with charts that say nothing; and once the
// file is whole, what stands in these parts is written anew.

// Lays charts that say nothing on a sheet, as many as it has.
void ReserveCharts(const Sheet& sheet, lxw_workbook* workbook, lxw_worksheet* worksheet);

// Adds the chart sheets behind all others.
void ReserveChartSheets(const Book& book, lxw_workbook* workbook);

// Puts the charts into the file. Does nothing when the book has none.
void WriteCharts(const Book& book, const std::filesystem::path& file);

}  // namespace mirelo::workbook
