#include "adapters/workbook/model/used_area.h"

#include <algorithm>

#include "adapters/workbook/model/sheet_formats.h"

namespace mirelo::workbook {

Area UsedArea(const Sheet& sheet) {
  Area used = Around(Area::Cell(1, 1), sheet.cells.Extent());
  const SheetFormats formats(sheet.styles);
  for (const auto& rows : formats.rows()) used.last_row = std::max(used.last_row, rows.last);
  formats.ForEachException(1, kRows, [&](const Area& area, StyleId) { used = Around(used, area); });
  return used;
}

}  // namespace mirelo::workbook
