#pragma once

#include <memory>

#include "adapters/workbook/objects/cell_block.h"
#include "host/excel/display_format.h"

namespace mirelo::workbook {

// How the block's first cell is shown now. The object does not follow later changes of the cell.
std::shared_ptr<host::excel::DisplayFormat> LookOf(const CellBlock& block);

}  // namespace mirelo::workbook
