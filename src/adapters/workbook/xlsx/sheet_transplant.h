#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/xlsx/style_merge.h"

namespace mirelo::workbook {

// The sheet part that the file writer wrote for one workbook, for use in another one. `styles` tells where
// its formats have gone there. Its shared strings, given as the file writer wrote them, come to stand in the
// cells.
std::string TransplantSheet(std::string_view sheet, const StyleIndexes& styles,
                            const std::vector<std::string>& shared_strings, bool is_selected);

// What stands between the tags of each item of a list of shared strings that the file writer wrote.
std::vector<std::string> SharedStringsIn(std::string_view part);

// A sheet part whose tab is not selected, whoever wrote it.
std::string WithoutSelectedTab(std::string sheet);

}  // namespace mirelo::workbook
