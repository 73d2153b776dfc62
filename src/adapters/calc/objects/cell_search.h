#pragma once

#include <optional>
#include <string_view>

#include "adapters/calc/objects/cell_block.h"
#include "host/excel/constants.h"

namespace mirelo::calc {

// Where host::excel::Range::Find leads in a block, from one of its cells.
std::optional<spreadsheet::CellPlace> FindCell(const CellBlock& block, std::string_view what,
                                               spreadsheet::CellPlace after, host::excel::XlSearchOrder order,
                                               host::excel::XlSearchDirection direction);

}  // namespace mirelo::calc
