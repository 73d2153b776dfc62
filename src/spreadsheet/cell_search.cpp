#include "spreadsheet/cell_search.h"

#include <cmath>

#include "spreadsheet/display/displayed_text.h"

namespace mirelo::spreadsheet {

std::string TypedForm(const CellValue& value, FormatKind kind) {
  const double* number = value.IfNumber();
  if (number == nullptr || kind != FormatKind::Date) return DisplayedText(value, "General");
  return DisplayedText(value, *number == std::floor(*number) ? "m/d/yyyy" : "m/d/yyyy h:mm:ss AM/PM");
}

}  // namespace mirelo::spreadsheet
