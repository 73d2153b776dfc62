#include "spreadsheet/compared_number.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "spreadsheet/errors.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

void CheckComparison(host::excel::XlFormatConditionType type, host::excel::XlFormatConditionOperator op) {
  if (type != host::excel::xlCellValue) throw Refusals::NotAComparisonOfValues();
  const bool has_one_value = host::excel::xlEqual <= op && op <= host::excel::xlLessEqual;
  if (!has_one_value) throw Refusals::NotOneValueCompared();
}

std::string NumberInFormula(std::string_view formula) {
  std::string_view text = formula;
  if (text.starts_with('=')) text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) {
    throw Refused("\"" + std::string(formula) + "\" is no number to compare with.");
  }
  return std::string(text);
}

}  // namespace mirelo::spreadsheet
