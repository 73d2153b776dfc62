#pragma once

#include <pugixml.hpp>
#include <string>

#include "adapters/workbook/xlsx/sheet_reader.h"

namespace mirelo::workbook {

// Fills a sheet's conditional formats from its part, whose root is `worksheet`.
void ReadConditions(SheetContext& context, const std::string& part, pugi::xml_node worksheet, Sheet& sheet);

}  // namespace mirelo::workbook
