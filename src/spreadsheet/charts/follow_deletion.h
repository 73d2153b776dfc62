#pragma once

#include "spreadsheet/area.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::spreadsheet {

// Where the series of a chart lie after the cells of `gone` were taken out of a sheet and those below have
// moved up. A series of which all cells are gone plots nothing.
void FollowDeletion(Chart& chart, const CellSource& sheet, const Area& gone);

}  // namespace mirelo::spreadsheet
