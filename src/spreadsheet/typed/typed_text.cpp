#include "spreadsheet/typed/typed_text.h"

#include <string>
#include <utility>

#include "automation/text.h"

namespace mirelo::spreadsheet {

namespace {

TypedValue Plain(std::string_view text) { return {CellValue::OfText(std::string(text)), {}}; }

}  // namespace

TypedValue TextAsIs(std::string_view text) { return Plain(text.starts_with('\'') ? text.substr(1) : text); }

TypedValue TypedText(std::string_view text, const RegionalFormat& regional) {
  // Nothing here computes formulas, so what looks like one stays the text that it is.
  if (text.starts_with('\'') || text.starts_with('=')) return TextAsIs(text);

  const std::string_view bare = Trim(text);
  if (bare.empty()) return Plain(text);
  if (EqualText(bare, "TRUE")) return {CellValue(true), {}};
  if (EqualText(bare, "FALSE")) return {CellValue(false), {}};
  if (const auto error = ParseCellError(bare)) return {CellValue(*error), {}};
  if (auto number = TypedNumber(bare, regional)) return std::move(*number);
  if (auto date = TypedDate(bare, regional)) return std::move(*date);
  return Plain(text);
}

}  // namespace mirelo::spreadsheet
