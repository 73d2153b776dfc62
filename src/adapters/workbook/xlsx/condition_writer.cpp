#include "adapters/workbook/xlsx/condition_writer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/writer_error.h"
#include "spreadsheet/address.h"

namespace mirelo::workbook {

namespace {

using namespace host::excel;

// The writer cuts a longer list of areas off; a condition that has more is written several times.
constexpr std::size_t kMostAreas = 90;

// By the number of the operator.
constexpr std::array<std::uint8_t, 9> kCriteria{LXW_CONDITIONAL_CRITERIA_NONE,
                                                LXW_CONDITIONAL_CRITERIA_BETWEEN,
                                                LXW_CONDITIONAL_CRITERIA_NOT_BETWEEN,
                                                LXW_CONDITIONAL_CRITERIA_EQUAL_TO,
                                                LXW_CONDITIONAL_CRITERIA_NOT_EQUAL_TO,
                                                LXW_CONDITIONAL_CRITERIA_GREATER_THAN,
                                                LXW_CONDITIONAL_CRITERIA_LESS_THAN,
                                                LXW_CONDITIONAL_CRITERIA_GREATER_THAN_OR_EQUAL_TO,
                                                LXW_CONDITIONAL_CRITERIA_LESS_THAN_OR_EQUAL_TO};

void WriteAreas(const Condition& condition, std::size_t first, std::size_t last, lxw_format* format,
                lxw_worksheet* worksheet) {
  std::string list;
  for (std::size_t i = first; i < last; ++i)
    list.append(list.empty() ? "" : " ").append(AddressText(condition.areas[i], false, false));

  std::string formula1 = condition.formula1;
  std::string formula2 = condition.formula2;
  lxw_conditional_format rule{};
  rule.type = LXW_CONDITIONAL_TYPE_CELL;
  rule.criteria = kCriteria[static_cast<std::size_t>(condition.op)];
  if (formula2.empty()) {
    rule.value_string = formula1.data();
  } else {
    rule.min_value_string = formula1.data();
    rule.max_value_string = formula2.data();
  }
  rule.format = format;
  rule.multi_range = list.data();
  rule.stop_if_true = condition.stop_if_true ? LXW_TRUE : LXW_FALSE;
  const Area& area = condition.areas[first];
  CheckWriter(worksheet_conditional_format_range(
      worksheet, static_cast<lxw_row_t>(area.first_row - 1), static_cast<lxw_col_t>(area.first_column - 1),
      static_cast<lxw_row_t>(area.last_row - 1), static_cast<lxw_col_t>(area.last_column - 1), &rule));
}

}  // namespace

void WriteConditions(const Conditions& conditions, lxw_worksheet* worksheet, FormatWriter& formats) {
  for (const auto& condition : conditions.all()) {
    lxw_format* format = formats.For(condition->format);
    for (std::size_t first = 0; first < condition->areas.size(); first += kMostAreas) {
      WriteAreas(*condition, first, std::min(first + kMostAreas, condition->areas.size()), format, worksheet);
    }
  }
}

}  // namespace mirelo::workbook
