#pragma once

#include "adapters/workbook/objects/cell_block.h"
#include "automation/variant.h"

namespace mirelo::workbook {

// The two halves of host::excel::Range::Value.
Variant ReadValue(const CellBlock& block);
void WriteValue(const CellBlock& block, const Variant& value);

}  // namespace mirelo::workbook
