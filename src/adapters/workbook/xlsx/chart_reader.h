#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_losses.h"
#include "adapters/workbook/xlsx/sheet_reader.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::workbook {

// What was read of a chart's part.
struct ChartInFile {
  std::shared_ptr<Chart> chart;       // null for a type of chart that is not kept
  std::string type;                   // as the file calls it, if so
  std::string title;                  // empty when it has none
  std::vector<std::string> formulas;  // of the cells of each series
  ChartLosses losses;
};

// Reads the part of a chart that lies at this place of its sheet.
ChartInFile ReadChart(SheetContext& context, const std::string& part, const ChartBox& place);

}  // namespace mirelo::workbook
