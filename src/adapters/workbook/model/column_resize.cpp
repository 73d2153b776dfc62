#include "adapters/workbook/model/column_resize.h"

#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/pixels.h"

namespace mirelo::workbook {

namespace {

// Of Chart::placement.
constexpr std::int32_t kGrows = 1;
constexpr std::int32_t kStays = 3;

}  // namespace

void ResizeColumn(Sheet& sheet, std::int32_t column, std::int32_t pixels) {
  const ColumnWidth& old = sheet.widths.At(column);
  if (old.pixels == pixels) return;
  const double wider = old.hidden ? 0 : (pixels - old.pixels) * kPointsPerPixel;
  const double left = WidthOfColumns(sheet, 1, column - 1);
  const double right = WidthOfColumns(sheet, 1, column);
  sheet.widths.Apply(column, column, [&](ColumnWidth& width) { width.pixels = pixels; });
  for (const auto& chart : sheet.charts.all) {
    ChartBox& place = chart->place;
    if (chart->placement == kStays) continue;
    if (place.left >= right) {
      place.left += wider;
    } else if (chart->placement == kGrows && place.left <= left && place.left + place.width >= right) {
      place.width += wider;
    }
  }
}

}  // namespace mirelo::workbook
