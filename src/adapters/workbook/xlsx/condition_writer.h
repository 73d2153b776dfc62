#pragma once

#include <xlsxwriter.h>

#include "adapters/workbook/model/condition.h"
#include "adapters/workbook/xlsx/format_writer.h"

namespace mirelo::workbook {

void WriteConditions(const Conditions& conditions, lxw_worksheet* worksheet, FormatWriter& formats);

}  // namespace mirelo::workbook
