#include "adapters/workbook/model/cell_value.h"

#include <array>
#include <utility>

#include "automation/text.h"

namespace mirelo::workbook {

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
  if (!text.empty()) value.value_ = std::make_unique<const std::string>(std::move(text));
  return value;
}

CellValue CellValue::NotCalculated() {
  CellValue value;
  value.value_ = Unknown();
  return value;
}

CellValue CellValue::Copy() const {
  if (const std::string* text = IfText()) return OfText(*text);
  if (const double* number = IfNumber()) return CellValue(*number);
  if (const bool* boolean = IfBoolean()) return CellValue(*boolean);
  if (const CellError* error = IfError()) return CellValue(*error);
  return IsNotCalculated() ? NotCalculated() : CellValue();
}

const std::string* CellValue::IfText() const {
  const Text* text = std::get_if<Text>(&value_);
  return text == nullptr ? nullptr : text->get();
}

bool operator==(const CellValue& a, const CellValue& b) {
  const std::string* text = a.IfText();
  const std::string* other = b.IfText();
  if (text != nullptr && other != nullptr) return *text == *other;
  return a.value_ == b.value_;
}

}  // namespace mirelo::workbook
