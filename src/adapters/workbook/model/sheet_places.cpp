#include "adapters/workbook/model/sheet_places.h"

#include <cmath>

namespace mirelo::workbook {

namespace {

double SizeOf(const ColumnWidth& width) { return width.hidden ? 0 : width.pixels * kPointsPerPixel; }

double SizeOf(const RowHeight& height) {
  if (height.hidden) return 0;
  return height.points > 0 ? height.points : kStandardRowHeight;
}

template <class T>
double SizeOf(const RunMap<T>& sizes, std::int32_t first, std::int32_t last) {
  double sum = 0;
  if (first > last) return sum;
  sizes.ForEach(first, last, [&](std::int32_t from, std::int32_t to, const T& size) {
    sum += SizeOf(size) * (to - from + 1);
  });
  return sum;
}

// The last of the columns or rows that begin before `points`.
template <class T>
std::int32_t LastBefore(double points, const RunMap<T>& sizes, std::int32_t limit) {
  double left = points;
  std::int32_t found = limit;
  sizes.ForEach(1, limit, [&](std::int32_t first, std::int32_t last, const T& size) {
    if (left <= 0) return;
    const double whole_run = SizeOf(size) * (last - first + 1);
    if (whole_run >= left) found = first + static_cast<std::int32_t>(std::ceil(left / SizeOf(size))) - 1;
    left -= whole_run;
  });
  return found;
}

}  // namespace

double WidthOfColumns(const Sheet& sheet, std::int32_t first, std::int32_t last) {
  return SizeOf(sheet.widths, first, last);
}

double HeightOfRows(const Sheet& sheet, std::int32_t first, std::int32_t last) {
  return SizeOf(sheet.heights, first, last);
}

Area VisibleArea(const Sheet& sheet) {
  return {1, 1, LastBefore(kWindowHeight, sheet.heights, kRows),
          LastBefore(kWindowWidth, sheet.widths, kColumns)};
}

}  // namespace mirelo::workbook
