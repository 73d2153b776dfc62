#pragma once

#include <xlsxwriter.h>

#include "adapters/workbook/model/sheet.h"
#include "adapters/workbook/xlsx/format_writer.h"
#include "adapters/workbook/xlsx/told_styles.h"

namespace mirelo::workbook {

// Writes the cells, formats, comments, conditions and sizes of a sheet, rows in ascending order. Its formats
// are told as `told` has them.
void WriteSheet(const Sheet& sheet, const ToldStyles& told, lxw_worksheet* worksheet, FormatWriter& formats);

}  // namespace mirelo::workbook
