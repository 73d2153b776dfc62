#pragma once

#include <memory>
#include <string>

#include "adapters/workbook/xlsx/relationships.h"
#include "adapters/workbook/xlsx/sheet_reader.h"

namespace mirelo::workbook {

// Reads the charts that lie on a sheet, from the drawing that it refers to if it does. What else lies there
// is a loss. Widths and heights of the sheet must have been read.
void ReadCharts(SheetContext& context, const Relationships& relationships, Sheet& sheet);

// Reads the part of a chart sheet of this name. Null when the type of its chart is not kept.
std::shared_ptr<Chart> ReadChartSheet(SheetContext& context, const std::string& part,
                                      const std::string& name);

}  // namespace mirelo::workbook
