#pragma once

#include "adapters/calc/objects/cell_block.h"

namespace mirelo::calc {

// What takes something away from the cells of a block: as host::excel::Range::Clear, ClearContents and
// Delete.

void ClearCells(const CellBlock& block);
void ClearCellContents(const CellBlock& block);
void DeleteCells(const CellBlock& block);

}  // namespace mirelo::calc
