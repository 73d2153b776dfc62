#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/xlsx/style_merge.h"

namespace mirelo::workbook {

// Makes a sheet part that the file writer wrote for one workbook fit for another one; the result is the text
// of the part there. `styles` has the indexes that its formats have in the other workbook. `shared_strings`
// are those of the first workbook (SharedStringsIn): a cell that refers to one gets the string itself
// instead. `is_selected` is for the sheet's tab.
std::string TransplantSheet(std::string_view sheet, const StyleIndexes& styles,
                            const std::vector<std::string>& shared_strings, bool is_selected);

// The shared strings of a part "sharedStrings" that the file writer wrote, as XML: what stands between the
// tags of each item.
std::vector<std::string> SharedStringsIn(std::string_view part);

// The same sheet part, whoever wrote it, with its tab not selected.
std::string WithoutSelectedTab(std::string sheet);

}  // namespace mirelo::workbook
