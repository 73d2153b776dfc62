#pragma once

#include <vector>

#include "adapters/workbook/model/area.h"
#include "adapters/workbook/model/sheet.h"
#include "adapters/workbook/model/style_grid.h"
#include "adapters/workbook/model/style_table.h"

namespace mirelo::workbook {

// The formats of a sheet as its file tells them.
//
// A format may reach far down over empty cells, as that of a history which is yet to come. Told by its cells
// it would be most of the file. Where nobody can see a difference, it is told as the format of the whole
// column instead, and its end by two empty cells that close the column: the last one of it, which would need
// no telling, and the one below, with the format of all the rest. StyleLayers takes these for what they are;
// to other programs the format reaches down to the sheet's foot.
struct ToldStyles {
  StyleGrid styles;              // in which such formats go on below those two cells
  std::vector<CellPlace> lasts;  // the upper ones of these
};
ToldStyles StylesToTell(const Sheet& sheet, const StyleTable& table);

}  // namespace mirelo::workbook
