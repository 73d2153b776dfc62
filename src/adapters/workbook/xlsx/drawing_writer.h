#pragma once

#include <string>

#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

// The part that tells where a sheet's charts lie. It refers to their parts by "rId1" and so on, in the order
// of the pile.
std::string DrawingXml(const Sheet& sheet);

}  // namespace mirelo::workbook
