#pragma once

#include "adapters/workbook/xlsx/relationships.h"
#include "adapters/workbook/xlsx/sheet_reader.h"

namespace mirelo::workbook {

// Fills a sheet's comments from the parts that it refers to.
void ReadComments(SheetContext& context, const Relationships& relationships, Sheet& sheet);

}  // namespace mirelo::workbook
