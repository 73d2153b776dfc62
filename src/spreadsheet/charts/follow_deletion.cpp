#include "spreadsheet/charts/follow_deletion.h"

#include "spreadsheet/area_set.h"

namespace mirelo::spreadsheet {

void FollowDeletion(Chart& chart, const CellSource& sheet, const Area& gone) {
  for (ChartSeries& series : chart.series) {
    if (series.values && series.sheet.lock().get() == &sheet)
      series.values = AfterDeletion(*series.values, gone);
  }
}

}  // namespace mirelo::spreadsheet
