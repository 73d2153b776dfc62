#pragma once

#include <string>

namespace mirelo::host::excel {
class Workbook;
}

namespace mirelo::testing {

// Workbooks of the spreadsheet that is served can be saved from now on, as clients do with Workbook.SaveAs:
// as .xlsx with the values of all cells, days as days, and the charts with their titles and the numbers that
// they show. Looks are left out. To be called before any object is asked for.
void LetWorkbooksBeSaved();

// Error 1004 when the file cannot be written.
void SaveWorkbook(host::excel::Workbook& workbook, const std::string& file);

}  // namespace mirelo::testing
