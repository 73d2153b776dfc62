#include "adapters/calc/objects/cell_block.h"

#include <com/sun/star/util/CellProtection.hpp>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/errors.h"

namespace mirelo::calc {

Reference<css::table::XCellRange> CellBlock::Cells() const {
  return sheet->Get()->getCellRangeByPosition(area.first_column - 1, area.first_row - 1, area.last_column - 1,
                                              area.last_row - 1);
}

Reference<css::table::XCell> CellBlock::FirstCell() const {
  return sheet->Get()->getCellByPosition(area.first_column - 1, area.first_row - 1);
}

void CellBlock::CheckNotProtected() const {
  if (document().IsKnownOpen(*sheet)) return;
  document().CheckNotOnlyForReading();
  if (!sheet->IsProtected()) return document().NoteOpen(*sheet);
  const auto protection = Properties().Common<css::util::CellProtection>("CellProtection");
  if (!protection || protection->IsLocked) throw SheetProtected(sheet->Name());
}

}  // namespace mirelo::calc
