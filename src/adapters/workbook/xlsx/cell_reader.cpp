#include "adapters/workbook/xlsx/cell_reader.h"

#include <cmath>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/iso_date.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/address.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

constexpr double kDaysTo1904 = 1462;  // from the first day of one calendar to that of the other

}  // namespace

CellReader::CellReader(SheetContext& context, std::string part, Sheet& sheet)
    : context_(context), part_(std::move(part)), sheet_(sheet) {}

void CellReader::Read(pugi::xml_node node, std::string_view type, std::int32_t row, std::int32_t column,
                      StyleId style) {
  row_ = row;
  column_ = column;
  CellValue value;
  const pugi::xml_node formula = Child(node, "f");
  // An error constant is written as a formula that is nothing but the error.
  const auto error = formula ? ParseCellError(Text(formula)) : std::nullopt;
  if (error) {
    value = CellValue(*error);
  } else {
    value = formula ? FormulaValue(node, type, style) : ValueOf(node, type, style);
  }
  if (!value.IsEmpty()) sheet_.cells.Set(row, column, std::move(value));
}

// A program that was to compute it later has left out the value, or put in an empty one.
CellValue CellReader::FormulaValue(pugi::xml_node node, std::string_view type, StyleId style) {
  CellValue value = ValueOf(node, type, style);
  const bool is_empty_text = type == "str" && Child(node, "v");
  if (!value.IsEmpty() || is_empty_text) {
    ++formulas_;
    return value;
  }
  ++formulas_without_value_;
  return CellValue::NotCalculated();
}

CellValue CellReader::ValueOf(pugi::xml_node node, std::string_view type, StyleId style) {
  if (type == "inlineStr") {
    SharedString text = ReadText(Child(node, "is"));
    if (text.rich) ++rich_texts_;
    return TextValue(std::move(text.text));
  }
  const pugi::xml_node content = Child(node, "v");
  if (!content) return {};
  const std::string_view text = Text(content, buffer_);
  if (type == "str") return TextValue(UnescapeText(text));
  if (text.empty()) return {};
  if (type == "s") return SharedText(text);
  if (type == "b") return CellValue(text == "1" || text == "true");
  if (type == "e") return ErrorValue(text);
  if (type == "d") return DateValue(text);
  if (type.empty() || type == "n") return NumberValue(text, style);
  throw DamagedCell("type \"" + std::string(type) + "\" does not exist");
}

CellValue CellReader::NumberValue(std::string_view text, StyleId style) const {
  const auto number = ParseWhole<double>(text);
  if (!number || !std::isfinite(*number))
    throw DamagedCell("\"" + std::string(text.substr(0, 40)) + "\" is no number");
  const bool is_date = context_.counts_from_1904 && context_.book.styles.Kind(style) == FormatKind::Date;
  return CellValue(is_date ? *number + kDaysTo1904 : *number);
}

CellValue CellReader::DateValue(std::string_view text) const {
  const auto serial = ParseIsoDate(text);
  if (!serial) throw DamagedCell("\"" + std::string(text.substr(0, 40)) + "\" is no date");
  return CellValue(*serial);
}

CellValue CellReader::ErrorValue(std::string_view text) {
  if (const auto error = ParseCellError(text)) return CellValue(*error);
  ++unknown_errors_;
  return CellValue(CellError::Value);
}

CellValue CellReader::SharedText(std::string_view text) {
  const auto index = ParseWhole<std::size_t>(text);
  if (!index || *index >= context_.strings.size()) {
    throw DamagedCell("text " + std::string(text.substr(0, 40)) + " does not exist");
  }
  const SharedString& string = context_.strings[*index];
  if (string.rich) ++rich_texts_;
  return TextValue(string.text);
}

CellValue CellReader::TextValue(std::string text) {
  if (text.size() > kLongestText && Utf16Length(text) > kLongestText) {
    throw DamagedCell("its text is longer than a cell takes");
  }
  context_.budget.TakeText(text.size(), part_);
  return CellValue::OfText(std::move(text));
}

RuntimeError CellReader::DamagedCell(std::string_view what) const {
  return Damaged(part_, "cell " + CellName(row_, column_) + ": " + std::string(what));
}

void CellReader::ReportLosses() const {
  const auto report = [&](std::size_t cells, std::string_view what, std::string_view fate,
                          bool is_work = false) {
    if (cells == 0) return;
    context_.losses.Add(sheet_.name,
                        "not kept: " + std::string(what) + " (cells: " + std::to_string(cells) + ")" +
                            std::string(fate) + ".",
                        is_work);
  };
  constexpr bool kWork = true;
  report(formulas_, "formulas", ", which become the last value computed", kWork);
  report(formulas_without_value_, "formulas that are not calculated", ", which leave nothing", kWork);
  report(rich_texts_, "several formats within one text", "");
  report(unknown_errors_, "errors of newer programs", ", which become #VALUE!");
}

}  // namespace mirelo::workbook
