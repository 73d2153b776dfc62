#pragma once

#include <cstdint>
#include <vector>

#include "adapters/workbook/model/sheet.h"
#include "adapters/workbook/model/style_grid.h"
#include "adapters/workbook/model/style_table.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"

namespace mirelo::workbook {

// The formats of a sheet as its file tells them.
//
// A format may reach far down over empty cells, as in a history whose rows are yet to come. Written cell by
// cell it would be most of the file. Where nobody can see a difference, it is written as the format of the
// whole column instead, and its end is marked by two empty cells at the column's foot: the last cell that has
// the format, and the one below it, with the format of all the rest. StyleLayers reads these two as a mark;
// to other programs the format reaches down to the sheet's foot.
//
// A person's file may hold two such cells that are no mark. So only those are read as one that this would
// write: then the file is saved as it was, and all cells look as they did.
struct ToldStyles {
  StyleGrid styles;              // with such formats going on below their marks
  std::vector<CellPlace> lasts;  // the upper cell of each mark
};
ToldStyles StylesToTell(const Sheet& sheet, const StyleTable& table);

// Whether the format of a column that is empty from `last` on would be written as the whole column's, with an
// end mark at `last`.
bool IsToldByItsEnd(const StyleGrid::Rows& rows, std::int32_t last, const StyleTable& table);

}  // namespace mirelo::workbook
