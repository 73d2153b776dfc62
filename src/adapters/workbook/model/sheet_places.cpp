#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/pixels.h"

#include <algorithm>
#include <cmath>

namespace mirelo::workbook {

namespace {

double PointsOf(const ColumnWidth& width) { return width.hidden ? 0 : width.pixels * kPointsPerPixel; }

double PointsOf(const RowHeight& height) {
  if (height.hidden) return 0;
  return height.points > 0 ? height.points : kStandardRowHeight;
}

template <class T>
double PointsOf(const RunMap<T>& sizes, std::int32_t first, std::int32_t last) {
  double sum = 0;
  if (first > last) return sum;
  sizes.ForEach(first, last, [&](std::int32_t from, std::int32_t to, const T& size) {
    sum += PointsOf(size) * (to - from + 1);
  });
  return sum;
}

// The last of the columns or rows that begin before `points`.
std::int32_t LastBefore(double points, const Ruler& ruler) { return ruler.MarkAt(Emu(points) - 1).number; }

}  // namespace

std::int64_t Emu(double points) { return std::llround(points * double{kEmuPerPoint}); }

double WidthOfColumns(const Sheet& sheet, std::int32_t first, std::int32_t last) {
  return PointsOf(sheet.widths, first, last);
}

double HeightOfRows(const Sheet& sheet, std::int32_t first, std::int32_t last) {
  return PointsOf(sheet.heights, first, last);
}

Area VisibleArea(const Sheet& sheet) {
  const SheetMeasure measure(sheet);
  return {1, 1, LastBefore(kWindowHeight, measure.rows), LastBefore(kWindowWidth, measure.columns)};
}

template <class T>
Ruler::Ruler(const RunMap<T>& sizes, std::int32_t count) : count_(count) {
  sizes.ForEach(1, count, [&](std::int32_t first, std::int32_t last, const T& size) {
    runs_.push_back({first, end_, Emu(PointsOf(size))});
    end_ += (last - first + 1) * runs_.back().size;
  });
}

Ruler Ruler::OfColumns(const Sheet& sheet) { return {sheet.widths, kColumns}; }
Ruler Ruler::OfRows(const Sheet& sheet) { return {sheet.heights, kRows}; }

Ruler::Mark Ruler::MarkAt(std::int64_t distance) const {
  if (distance >= end_) {
    const Run& run = runs_.back();
    return {count_, run.size};
  }
  distance = std::max<std::int64_t>(distance, 0);
  // Of runs that begin there the last one has a size.
  const auto behind =
      std::upper_bound(runs_.begin(), runs_.end(), distance,
                       [](std::int64_t wanted, const Run& run) { return wanted < run.start; });
  const Run& run = *(behind - 1);
  const std::int64_t within = distance - run.start;
  return {run.first + static_cast<std::int32_t>(within / run.size), within % run.size};
}

std::int64_t Ruler::DistanceOf(const Mark& mark) const {
  const auto behind =
      std::upper_bound(runs_.begin(), runs_.end(), mark.number,
                       [](std::int32_t wanted, const Run& run) { return wanted < run.first; });
  const Run& run = *(behind - 1);
  return run.start + (mark.number - run.first) * run.size +
         std::clamp<std::int64_t>(mark.offset, 0, run.size);
}

}  // namespace mirelo::workbook
