#pragma once

#include <xlsxwriter.h>

#include "adapters/workbook/model/sheet.h"
#include "adapters/workbook/xlsx/format_writer.h"

namespace mirelo::workbook {

// Writes the cells, formats, comments, conditions and sizes of a sheet, rows in ascending order.
void WriteSheet(const Sheet& sheet, lxw_worksheet* worksheet, FormatWriter& formats);

}  // namespace mirelo::workbook
