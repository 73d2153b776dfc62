#include "adapters/workbook/display/displayed_style.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "automation/text.h"

namespace mirelo::workbook {

using namespace host::excel;

namespace {

// A number, a text (which may be empty) or a boolean, in the order in which kinds compare.
struct Operand {
  enum class Kind { Number, Text, Boolean };

  Kind kind = Kind::Number;
  double number = 0;  // of a boolean 0 or 1
  std::string text;

  static Operand OfNumber(double number) { return {Kind::Number, number, ""}; }
  static Operand OfText(std::string text) { return {Kind::Text, 0, std::move(text)}; }
  static Operand OfBoolean(bool boolean) { return {Kind::Boolean, boolean ? 1.0 : 0.0, ""}; }
};

// The value that a formula such as "0", "\"up\"" or "TRUE" is.
Operand OperandOf(std::string_view formula) {
  if (formula.starts_with('"'))
    return Operand::OfText(Replace(formula.substr(1, formula.size() - 2), "\"\"", "\""));
  if (formula == "TRUE" || formula == "FALSE") return Operand::OfBoolean(formula == "TRUE");
  double number = 0;
  std::from_chars(formula.data(), formula.data() + formula.size(), number);
  return Operand::OfNumber(number);
}

// What a cell brings to a comparison with a value of that kind.
Operand OperandOf(const CellValue& value, Operand::Kind of_other) {
  if (const double* number = value.IfNumber()) return Operand::OfNumber(*number);
  if (const bool* boolean = value.IfBoolean()) return Operand::OfBoolean(*boolean);
  if (const std::string* text = value.IfText()) return Operand::OfText(*text);
  return {of_other, 0, ""};
}

// Below, at or above 0 as the cell's value is less, equal or greater.
int Order(const CellValue& value, std::string_view formula) {
  const Operand other = OperandOf(formula);
  const Operand own = OperandOf(value, other.kind);
  if (own.kind != other.kind) return own.kind < other.kind ? -1 : 1;
  if (own.kind == Operand::Kind::Text) return StrComp(own.text, other.text, Compare::Text);
  return own.number < other.number ? -1 : own.number > other.number ? 1 : 0;
}

bool LiesBetween(const CellValue& value, const Condition& condition) {
  const int first = Order(value, condition.formula1);
  const int second = Order(value, condition.formula2);
  return (first >= 0 && second <= 0) || (first <= 0 && second >= 0);
}

const CellValue& ValueOf(const Sheet& sheet, std::int32_t row, std::int32_t column) {
  static const CellValue blank;
  const CellValue* value = sheet.cells.Find(row, column);
  return value == nullptr ? blank : *value;
}

// Applies the changes to a style, but for what a condition before this one has set: `laid` gathers that.
void Lay(const DifferentialFormat& changes, DifferentialFormat& laid, Style& style) {
  if (changes.bold) style.font.bold = true;
  if (changes.italic) style.font.italic = true;
  if (changes.strikeout) style.font.strikeout = true;
  if (changes.underline != 0 && laid.underline == 0)
    style.font.underline = laid.underline = changes.underline;
  if (changes.color != kAutomatic && laid.color == kAutomatic) style.font.color = laid.color = changes.color;
  if (changes.fill.pattern != 0 && laid.fill.pattern == 0) style.fill = laid.fill = changes.fill;
  if (!changes.number_format.empty() && laid.number_format.empty()) {
    style.number_format = laid.number_format = changes.number_format;
  }
  for (std::size_t edge = 0; edge < kEdges; ++edge) {
    if (changes.border.edges[edge].line == 0 || laid.border.edges[edge].line != 0) continue;
    style.border.edges[edge] = laid.border.edges[edge] = changes.border.edges[edge];
  }
}

}  // namespace

Style DisplayedStyle(const Book& book, const Sheet& sheet, std::int32_t row, std::int32_t column) {
  Style style = book.styles.Get(sheet.styles.At(row, column));
  if (sheet.conditions.all().empty()) return style;
  DifferentialFormat laid;
  for (const auto& condition : sheet.conditions.all()) {
    const bool reaches = std::any_of(condition->areas.begin(), condition->areas.end(),
                                     [&](const Area& area) { return area.Holds(row, column); });
    if (!reaches || !Meets(ValueOf(sheet, row, column), *condition)) continue;
    Lay(condition->format, laid, style);
    if (condition->stop_if_true) break;
  }
  return style;
}

bool Meets(const CellValue& value, const Condition& condition) {
  if (value.IfError() != nullptr) return false;
  switch (condition.op) {
    case xlBetween:
      return LiesBetween(value, condition);
    case xlNotBetween:
      return !LiesBetween(value, condition);
    case xlEqual:
      return Order(value, condition.formula1) == 0;
    case xlNotEqual:
      return Order(value, condition.formula1) != 0;
    case xlGreater:
      return Order(value, condition.formula1) > 0;
    case xlLess:
      return Order(value, condition.formula1) < 0;
    case xlGreaterEqual:
      return Order(value, condition.formula1) >= 0;
    case xlLessEqual:
      return Order(value, condition.formula1) <= 0;
  }
  return false;
}

}  // namespace mirelo::workbook
