#pragma once

#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

// From A1 to the last row and the last column that hold a value or a format of their own.
Area UsedArea(const Sheet& sheet);

}  // namespace mirelo::workbook
