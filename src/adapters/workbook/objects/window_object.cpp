#include "adapters/workbook/objects/window_object.h"

#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/objects/range_object.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/refusals.h"

namespace mirelo::workbook {

std::shared_ptr<host::excel::Range> WindowObject::VisibleRange() {
  const std::shared_ptr<Sheet> sheet = book_->FrontSheet();
  if (sheet == nullptr) throw Refusals::NoCellsInFront();
  return std::make_shared<RangeObject>(CellBlock{book_, sheet, VisibleArea(*sheet)},
                                       RangeObject::View::Cells);
}

}  // namespace mirelo::workbook
