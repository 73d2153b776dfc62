#pragma once

#include <xlsxwriter.h>

#include "adapters/workbook/model/sheet.h"
#include "adapters/workbook/xlsx/format_writer.h"

namespace mirelo::workbook {

// Writes the cells, formats and sizes of a sheet. Error 1004 when more empty cells have formats of their own
// than a file can sensibly hold (2^24).
void WriteSheet(const Sheet& sheet, lxw_worksheet* worksheet, FormatWriter& formats);

}  // namespace mirelo::workbook
