#include "windows/spreadsheet/served.h"

#include "adapters/workbook/spreadsheet.h"
#include "com/server.h"

namespace mirelo::testing {

com::Held<IClassFactory> SpreadsheetFactory() {
  return com::FactoryOf([] { return workbook::Spreadsheet::New().Application(); });
}

}  // namespace mirelo::testing
