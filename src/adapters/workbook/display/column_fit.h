#pragma once

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// Makes the area's columns as wide as the widest text that its cells show. Widths of letters are those of a
// common sans-serif face by classes, so a column may come out a few pixels wider than it must be.
void FitColumns(const Book& book, Sheet& sheet, const Area& area);

}  // namespace mirelo::workbook
