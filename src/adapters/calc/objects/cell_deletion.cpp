#include "adapters/calc/objects/cell_deletion.h"

#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/CellDeleteMode.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>

#include "adapters/calc/objects/cell_formats.h"
#include "adapters/calc/objects/comment_object.h"
#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/floating_objects.h"
#include "adapters/calc/objects/row_heights.h"
#include "adapters/calc/objects/sheet_conditions.h"
#include "adapters/calc/objects/used_area.h"

namespace mirelo::calc {

namespace flags = css::sheet::CellFlags;

namespace {

constexpr sal_Int32 kContents = flags::VALUE | flags::DATETIME | flags::STRING | flags::FORMULA;
constexpr sal_Int32 kFormats = flags::HARDATTR | flags::STYLES | flags::EDITATTR | flags::FORMATTED;

// The part of a block above the foot of what is used.
CellBlock Above(const CellBlock& block, const spreadsheet::Area& used) {
  const spreadsheet::Area rows{1, 1, used.last_row, spreadsheet::kColumns};
  return block.At(Shared(block.area, rows).value_or(spreadsheet::Area::Cell(1, 1)));
}

void ClearFlags(const CellBlock& block, sal_Int32 what) {
  block.document().StayAside();
  As<css::sheet::XSheetOperation>(block.Cells())->clearContents(what);
}

}  // namespace

void ClearCellContents(const CellBlock& block) {
  const CellBlock filled = Above(block, UsedArea(*block.sheet));
  HeldHeights heights(filled);
  ClearFlags(block, kContents);
  heights.Fit();
}

// Rows are as high as the fonts of their empty cells need, too.
void ClearCells(const CellBlock& block) {
  ClearComments(block);
  const bool are_held = HeldHeights::AreNeeded(block.document());
  const CellBlock used = Above(block, are_held ? UsedOrFormattedArea(*block.sheet) : UsedArea(*block.sheet));
  HeldHeights heights(used);
  ClearFlags(block, kContents | kFormats);
  // Formats of columns behind the last one that was ever touched stay otherwise.
  if (block.area.IsWholeRows()) {
    const auto states = As<css::beans::XPropertyState>(block.Cells());
    for (const char* format : kCellFormats) {
      block.document().StayAside();
      states->setPropertyToDefault(OfficeText(format));
    }
  }
  heights.Fit();
}

void DeleteCells(const CellBlock& block) {
  ClearUndoListIfCommented(block);
  const bool are_rows = block.area.IsWholeRows();
  if (!are_rows) SheetConditions(block.sheet).CutBeside(block.area);
  const auto mode = are_rows ? css::sheet::CellDeleteMode_ROWS : css::sheet::CellDeleteMode_UP;
  block.document().StayAside();
  As<css::sheet::XCellRangeMovement>(block.sheet->Get())
      ->removeRange(As<css::sheet::XCellRangeAddressable>(block.Cells())->getRangeAddress(), mode);
  FollowDeletion(block);
}

}  // namespace mirelo::calc
