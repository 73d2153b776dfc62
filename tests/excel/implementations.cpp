#include "adapters/workbook/spreadsheet.h"
#include "conformance.h"
#include "late_bound.h"

namespace mirelo::testing {

std::vector<Implementation> Implementations() {
  return {{"InMemory", [] { return workbook::Spreadsheet::New().Application(); }},
          {"CalledByNames", [] { return CalledByNames(workbook::Spreadsheet::New().Application()); }}};
}

}  // namespace mirelo::testing
