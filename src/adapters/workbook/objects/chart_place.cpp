#include "adapters/workbook/objects/chart_place.h"

#include <algorithm>
#include <cmath>

#include "adapters/workbook/rules.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

std::vector<std::shared_ptr<Chart>>& ChartPlace::All() const {
  if (sheet != nullptr) return sheet->charts.all;
  return book->chart_sheets;
}

Chart& ChartPlace::Get() const {
  Index();
  return *chart;
}

std::int32_t ChartPlace::Index() const {
  const auto& all = All();
  const auto found = std::find(all.begin(), all.end(), chart);
  if (found == all.end()) throw Refused("This chart is no longer there.");
  return static_cast<std::int32_t>(found - all.begin()) + 1;
}

void ChartPlace::Select() const {
  Get();
  if (sheet == nullptr) {
    book->front_chart = chart;
    return;
  }
  if (sheet->hidden) throw Refused("A chart on a hidden sheet cannot be selected.");
  book->BringToFront(*sheet);
  sheet->selected_chart = chart;
  sheet->selected_comment.reset();
}

double CheckedPoints(double points) {
  if (!std::isfinite(points)) throw Refused("This is no place and no size.");
  return points;
}

}  // namespace mirelo::workbook
