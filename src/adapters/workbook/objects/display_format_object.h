#pragma once

#include <memory>

#include "adapters/workbook/objects/cell_block.h"
#include "host/excel/display_format.h"

namespace mirelo::workbook {

// The look of the block's first cell. It stays what it is when the cell changes.
std::shared_ptr<host::excel::DisplayFormat> LookOf(const CellBlock& block);

}  // namespace mirelo::workbook
