#include "spreadsheet/cell_value.h"

#include <array>
#include <utility>

#include "automation/text.h"

namespace mirelo::spreadsheet {

namespace {

// In the order of CellError.
constexpr std::array<std::string_view, 7> kErrorTexts{"#NULL!", "#DIV/0!", "#VALUE!", "#REF!",
                                                      "#NAME?", "#NUM!",   "#N/A"};

}  // namespace

std::string_view ErrorText(CellError error) { return kErrorTexts[static_cast<std::size_t>(error)]; }

std::optional<CellError> ParseCellError(std::string_view text) {
  for (std::size_t i = 0; i < kErrorTexts.size(); ++i) {
    if (EqualText(text, kErrorTexts[i])) return static_cast<CellError>(i);
  }
  return std::nullopt;
}

CellValue CellValue::OfText(std::string text) {
  CellValue value;
  if (text.empty()) return value;
  value.content_.text = new const std::string(std::move(text));
  value.kind_ = Kind::Text;
  return value;
}

CellValue CellValue::NotCalculated() {
  CellValue value;
  value.kind_ = Kind::NotCalculated;
  return value;
}

CellValue CellValue::Copy() const {
  if (const std::string* text = IfText()) return OfText(*text);
  if (const double* number = IfNumber()) return CellValue(*number);
  if (const bool* boolean = IfBoolean()) return CellValue(*boolean);
  if (const CellError* error = IfError()) return CellValue(*error);
  return IsNotCalculated() ? NotCalculated() : CellValue();
}

bool operator==(const CellValue& a, const CellValue& b) {
  if (a.kind_ != b.kind_) return false;
  switch (a.kind_) {
    case CellValue::Kind::Number:
      return a.content_.number == b.content_.number;
    case CellValue::Kind::Boolean:
      return a.content_.boolean == b.content_.boolean;
    case CellValue::Kind::Error:
      return a.content_.error == b.content_.error;
    case CellValue::Kind::Text:
      return *a.content_.text == *b.content_.text;
    case CellValue::Kind::Empty:
    case CellValue::Kind::NotCalculated:
      break;
  }
  return true;
}

}  // namespace mirelo::spreadsheet
