#pragma once

#include <string>
#include <vector>

#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"

namespace mirelo::workbook {

// The text of a sheet's part without the values of these cells, in the order of rows and columns: their
// formulas and formats stay, and every other byte. A part in another encoding than UTF-8 is written anew in
// that.
std::string WithoutResults(const std::string& part, std::string sheet, const std::vector<CellPlace>& cells);

}  // namespace mirelo::workbook
