#pragma once

#include "adapters/calc/objects/cell_block.h"
#include "automation/variant.h"

namespace mirelo::calc {

// host::excel::Range::Value of a block.
Variant ReadValue(const CellBlock& block);
void WriteValue(const CellBlock& block, const Variant& value);

}  // namespace mirelo::calc
