#pragma once

#include <string>
#include <vector>

#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

// Whether a sheet is what it was when it was loaded, but for what is selected; `loaded` is the same sheet of
// the file read again. Styles are compared by their ids, which reading gives out in the same order each time.
bool IsUnchanged(const Sheet& sheet, const Sheet& loaded);

// The same, but other values in the cells of `but` are no change.
bool IsUnchanged(const Sheet& sheet, const Sheet& loaded, const std::vector<CellPlace>& but);

// The same for a chart on the sheet `own_sheet`. It counts as unchanged, too, where it has followed cells of
// another sheet that moved up or went, as it does when rows are deleted there.
bool IsUnchanged(const Chart& chart, const Chart& loaded, const std::string& own_sheet);

}  // namespace mirelo::workbook
