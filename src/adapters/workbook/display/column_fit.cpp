#include "adapters/workbook/display/column_fit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string_view>

#include "adapters/workbook/display/displayed_text.h"

namespace mirelo::workbook {

namespace {

constexpr double kReferenceSize = 11;  // points for which the widths below hold, in pixels at 96 dpi
constexpr double kBoldFactor = 1.07;
constexpr std::int32_t kPadding = 9;  // at both sides together, with the grid line

constexpr std::string_view kNarrow = " !'(),-./:;I[]`fijlrt{|}";
constexpr std::string_view kWide = "%&@GMOQWmw";

double LetterWidth(char c) {
  if ((static_cast<unsigned char>(c) & 0xC0) == 0x80)
    return 0;                                            // within a character that was counted at its start
  if (static_cast<unsigned char>(c) >= 0xE0) return 14;  // beyond the alphabets of two bytes: ideographs
  if (kNarrow.find(c) != std::string_view::npos) return 4.6;
  if (kWide.find(c) != std::string_view::npos) return 11;
  return 'A' <= c && c <= 'Z' ? 9 : 7.4;
}

double LineWidth(std::string_view line, const FontStyle& font) {
  double width = 0;
  for (const char c : line) width += LetterWidth(c);
  return width * font.size / kReferenceSize * (font.bold ? kBoldFactor : 1);
}

std::int32_t TextWidth(std::string_view text, const FontStyle& font) {
  double widest = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    widest = std::max(widest, LineWidth(text.substr(0, end), font));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return static_cast<std::int32_t>(std::ceil(widest)) + kPadding;
}

}  // namespace

void FitColumns(const Book& book, Sheet& sheet, const Area& area) {
  std::map<std::int32_t, std::int32_t> widths;
  sheet.cells.ForEach(area, [&](std::int32_t row, std::int32_t column, const CellValue& value) {
    const Style& style = book.styles.Get(sheet.styles.At(row, column));
    std::int32_t& width = widths[column];
    width = std::max(width, TextWidth(DisplayedText(value, style.number_format), style.font));
  });
  for (const auto& [column, width] : widths) {
    const std::int32_t pixels = std::min(width, ColumnWidth::kGreatestPixels);
    sheet.widths.Apply(column, column, [&](ColumnWidth& old) { old.pixels = pixels; });
  }
}

}  // namespace mirelo::workbook
