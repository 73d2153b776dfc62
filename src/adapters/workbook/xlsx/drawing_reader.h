#pragma once

#include "adapters/workbook/xlsx/relationships.h"
#include "adapters/workbook/xlsx/sheet_reader.h"

namespace mirelo::workbook {

// Reads the charts that lie on a sheet, from the drawing that it refers to if it does. What else lies there
// is a loss. Widths and heights of the sheet must have been read.
void ReadCharts(SheetContext& context, const Relationships& links, Sheet& sheet);

}  // namespace mirelo::workbook
