#include "app/spreadsheet_program.h"

#include "adapters/workbook/files.h"

namespace mirelo::app {

std::unique_ptr<host::Documents> SpreadsheetProgram() { return std::make_unique<workbook::Files>(); }

}  // namespace mirelo::app
