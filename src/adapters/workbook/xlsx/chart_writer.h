#pragma once

#include <string>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// The text of a chart's part. It holds the values that the cells have now, for programs that do not compute.
// A series whose cells lie on no sheet of the book has none.
std::string ChartXml(const Chart& chart, const Book& book);

}  // namespace mirelo::workbook
