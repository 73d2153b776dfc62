#include "adapters/workbook/display/column_fit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string_view>

#include "adapters/workbook/model/column_resize.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/display/displayed_text.h"
#include "spreadsheet/display/text_width.h"

namespace mirelo::workbook {

namespace {

constexpr std::int32_t kPadding = 9;  // at both sides together, with the grid line

std::int32_t FittingWidth(std::string_view text, const FontStyle& font) {
  return static_cast<std::int32_t>(std::ceil(WidthOfText(text, font.size, font.bold))) + kPadding;
}

}  // namespace

void FitColumns(const Book& book, Sheet& sheet, const Area& area) {
  std::map<std::int32_t, std::int32_t> widths;
  sheet.cells.ForEach(area, [&](std::int32_t row, std::int32_t column, const CellValue& value) {
    const Style& style = book.styles.Get(sheet.styles.At(row, column));
    std::int32_t& width = widths[column];
    width = std::max(width, FittingWidth(DisplayedText(value, style.number_format), style.font));
  });
  for (const auto& [column, width] : widths) {
    ResizeColumn(sheet, column, std::min(width, ColumnWidth::kGreatestPixels));
  }
}

}  // namespace mirelo::workbook
