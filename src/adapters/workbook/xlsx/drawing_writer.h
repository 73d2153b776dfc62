#pragma once

#include <string>

#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

// The text of the part that says where a sheet's charts lie. It refers to the parts of the charts by "rId1"
// and so on, in the order of the pile.
std::string DrawingXml(const Sheet& sheet);

// The same for a chart sheet, which has one chart from corner to corner.
std::string DrawingXml(const Chart& chart_sheet);

}  // namespace mirelo::workbook
