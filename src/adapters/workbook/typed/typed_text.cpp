#include "adapters/workbook/typed/typed_text.h"

#include <string>
#include <utility>

#include "automation/text.h"

namespace mirelo::workbook {

namespace {

TypedValue Plain(std::string_view text) { return {CellValue::OfText(std::string(text)), {}}; }

}  // namespace

TypedValue TypedText(std::string_view text, const RegionalFormat& regional) {
  if (text.starts_with('\'')) return Plain(text.substr(1));
  // Nothing here computes formulas, so what looks like one stays the text that it is.
  if (text.starts_with('=')) return Plain(text);

  const std::string_view bare = Trim(text);
  if (bare.empty()) return Plain(text);
  if (EqualText(bare, "TRUE")) return {CellValue(true), {}};
  if (EqualText(bare, "FALSE")) return {CellValue(false), {}};
  if (const auto error = ParseCellError(bare)) return {CellValue(*error), {}};
  if (auto number = TypedNumber(bare, regional)) return std::move(*number);
  if (auto date = TypedDate(bare, regional)) return std::move(*date);
  return Plain(text);
}

}  // namespace mirelo::workbook
