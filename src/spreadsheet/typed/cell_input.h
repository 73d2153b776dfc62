#pragma once

#include "automation/variant.h"
#include "spreadsheet/format_code.h"
#include "spreadsheet/typed/typed_text.h"

namespace mirelo::spreadsheet {

// Raises what host::excel::Range::Value raises for a single value that no cell takes.
void CheckCellInput(const Variant& value);

// What a value, checked before, becomes in a cell whose number format is of this kind.
TypedValue CellInput(const Variant& value, FormatKind kind, const RegionalFormat& regional);

// A cell's value as clients see it.
Variant CellOutput(const CellValue& value, FormatKind kind);

}  // namespace mirelo::spreadsheet
