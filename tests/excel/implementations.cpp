#include "adapters/workbook/spreadsheet.h"
#include "conformance.h"

namespace mirelo::testing {

std::vector<Implementation> Implementations() {
  return {{"InMemory", [] { return workbook::Spreadsheet::New().Application(); }}};
}

}  // namespace mirelo::testing
