#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

void Sheet::Delete(const Area& area) {
  cells.Delete(area);
  styles.Delete(area);
  comments.Delete(area);
  conditions.Delete(area);
  if (area.IsWholeRows()) heights.Remove(area.first_row, area.last_row);
}

}  // namespace mirelo::workbook
