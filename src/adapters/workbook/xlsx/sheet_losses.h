#pragma once

#include <pugixml.hpp>
#include <string>

#include "adapters/workbook/xlsx/losses.h"
#include "adapters/workbook/xlsx/relationships.h"

namespace mirelo::workbook {

// Reports what the elements of a sheet's part, and the parts that it refers to, hold beyond a table of cells.
// An element that is not known is reported by its name; one that holds nothing is passed over.
void ReportSheetLosses(pugi::xml_node worksheet, const Relationships& relationships, const std::string& sheet,
                       Losses& losses);

// The same for the parts that a workbook, or the package as a whole, refers to.
void ReportWorkbookLosses(pugi::xml_node workbook, const Relationships& relationships, Losses& losses);
void ReportPackageLosses(const Relationships& relationships, Losses& losses);

}  // namespace mirelo::workbook
