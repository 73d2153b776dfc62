#pragma once

#include <map>
#include <vector>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/origin.h"
#include "spreadsheet/area.h"

namespace mirelo::workbook {

// Cells of kept sheets, in the order of rows and in each row of columns.
using StaleResults = std::map<const Sheet*, std::vector<CellPlace>>;

// The cells of kept sheets whose results in the file may be out of date: those of formulas that depend on a
// sheet that is not kept (directly, by a name or a table, or through other formulas), on the time, or on
// something that their text does not tell. None where all sheets are kept. It may name too many, where
// finding out would take too long, and never too few. Of charts and pivot tables, which keep values of their
// own, it says nothing: other programs draw charts from the cells.
StaleResults FindStaleResults(const Book& book, const Origin& origin, const Origin::Kept& kept);

}  // namespace mirelo::workbook
