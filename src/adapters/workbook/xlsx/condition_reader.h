#pragma once

#include <pugixml.hpp>
#include <string>

#include "adapters/workbook/xlsx/sheet_reader.h"

namespace mirelo::workbook {

// Reads the conditional formats of a sheet from its part, whose root is `worksheet`, into `sheet`.
void ReadConditions(SheetContext& context, const std::string& part, pugi::xml_node worksheet, Sheet& sheet);

}  // namespace mirelo::workbook
