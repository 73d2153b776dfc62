#pragma once

#include <optional>
#include <string_view>

#include "adapters/workbook/objects/cell_block.h"
#include "host/excel/constants.h"

namespace mirelo::workbook {

// Where host::excel::Range::Find leads in a block, from one of its cells.
std::optional<CellPlace> FindCell(const CellBlock& block, std::string_view what, CellPlace after,
                                  host::excel::XlSearchOrder order, host::excel::XlSearchDirection direction);

}  // namespace mirelo::workbook
