#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/xlsx/style_merge.h"

namespace mirelo::workbook {

// The text of a sheet part that the file writer wrote for one workbook, changed so that it fits into another
// workbook. `styles` maps its formats to their indexes there. `shared_strings` are those of the first
// workbook (SharedStringsIn): a cell that refers to one gets the string itself instead. `is_selected` says
// whether its tab is selected.
std::string TransplantSheet(std::string_view sheet, const StyleIndexes& styles,
                            const std::vector<std::string>& shared_strings, bool is_selected);

// The shared strings of a part "sharedStrings" that the file writer wrote, as XML: what stands between the
// tags of each item.
std::vector<std::string> SharedStringsIn(std::string_view part);

// The same sheet part, whoever wrote it, with its tab not selected.
std::string WithoutSelectedTab(std::string sheet);

}  // namespace mirelo::workbook
