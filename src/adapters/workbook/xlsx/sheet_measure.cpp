#include "adapters/workbook/xlsx/sheet_measure.h"

#include <algorithm>
#include <cmath>

#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/xlsx/chart_names.h"

namespace mirelo::workbook {

Ruler Ruler::OfColumns(const Sheet& sheet) {
  Ruler ruler(kColumns);
  sheet.widths.ForEach(1, kColumns, [&](std::int32_t first, std::int32_t last, const ColumnWidth& width) {
    ruler.Add(first, last, width.hidden ? 0 : width.pixels * kEmuPerPixel);
  });
  return ruler;
}

Ruler Ruler::OfRows(const Sheet& sheet) {
  Ruler ruler(kRows);
  sheet.heights.ForEach(1, kRows, [&](std::int32_t first, std::int32_t last, const RowHeight& height) {
    const double points = height.points > 0 ? height.points : kStandardRowHeight;
    ruler.Add(first, last, height.hidden ? 0 : std::llround(points * double{kEmuPerPoint}));
  });
  return ruler;
}

void Ruler::Add(std::int32_t first, std::int32_t last, std::int64_t size) {
  runs_.push_back({first, end_, size});
  end_ += (last - first + 1) * size;
}

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
