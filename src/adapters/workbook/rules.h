#pragma once

namespace mirelo::spreadsheet {
struct Chart;
struct ChartTitle;
}  // namespace mirelo::spreadsheet

namespace mirelo::workbook {

// The workbook in memory is a spreadsheet: the names of the rules that it shares with others are at home in
// it.
using namespace spreadsheet;
using spreadsheet::Chart;  // where clients' charts are meant, host::excel is named
using spreadsheet::ChartTitle;

}  // namespace mirelo::workbook
