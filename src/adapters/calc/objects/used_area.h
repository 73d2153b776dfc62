#pragma once

#include "adapters/calc/objects/cell_block.h"
#include "host/excel/constants.h"
#include "spreadsheet/area.h"

namespace mirelo::calc {

// From A1 to where the last row and the last column with contents meet.
spreadsheet::Area UsedArea(DocumentSheet& sheet);

// The same, and formats count: those of cells, and of whole rows, but not of whole columns.
spreadsheet::Area UsedOrFormattedArea(DocumentSheet& sheet);

// Where host::excel::Range::End leads from a block's first cell. Error 1004 for what is no direction.
spreadsheet::CellPlace EndFrom(const CellBlock& block, host::excel::XlDirection direction);

}  // namespace mirelo::calc
