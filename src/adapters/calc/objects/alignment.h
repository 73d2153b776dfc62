#pragma once

#include <com/sun/star/table/CellHoriJustify.hpp>
#include <cstdint>

#include "adapters/calc/objects/cell_block.h"
#include "adapters/calc/objects/properties.h"
#include "automation/variant.h"

namespace mirelo::calc {

// A horizontal alignment as the office has it.
struct OfficeAlignment {
  css::table::CellHoriJustify justify;
  sal_Int32 method;
};

// Of an XlHAlign; error 1004 for other numbers. Calc does not centre across a selection: it centres in each
// cell.
OfficeAlignment AlignmentInOffice(std::int32_t alignment);
void Align(const CellBlock& cells, const OfficeAlignment& alignment);
// Empty where the cells differ.
Variant AlignmentOf(const Properties& cells);

}  // namespace mirelo::calc
