#pragma once

namespace mirelo::spreadsheet {}

namespace mirelo::workbook {

// The workbook in memory is a spreadsheet: the names of the rules that it shares with others are at home in
// it.
using namespace spreadsheet;

}  // namespace mirelo::workbook
