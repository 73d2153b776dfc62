#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

void Sheet::Delete(const Area& area) {
  cells.Delete(area);
  styles.Delete(area);
  comments.Delete(area);
  conditions.Delete(area);
  if (area.IsWholeRows()) heights.Remove(area.first_row, area.last_row);
}

void Sheet::ForEachNumber(
    const Area& area,
    const std::function<void(std::int32_t row, std::int32_t column, double number)>& visit) const {
  cells.ForEach(area, [&](std::int32_t row, std::int32_t column, const CellValue& value) {
    if (const double* number = value.IfNumber()) visit(row, column, *number);
  });
}

}  // namespace mirelo::workbook
