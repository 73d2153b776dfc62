#pragma once

#include "adapters/calc/objects/cell_block.h"
#include "automation/variant.h"

namespace mirelo::calc {

// How many digits of the standard font a block's columns take; empty where they differ.
Variant DigitsOfColumns(const CellBlock& block);
void SetDigitsOfColumns(const CellBlock& block, double digits);

// Makes the columns as wide as their texts. Those without text keep their widths.
void FitColumns(const CellBlock& block);

}  // namespace mirelo::calc
