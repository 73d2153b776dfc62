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

void ClearFlags(const CellBlock& block, sal_Int32 what) {
  const spreadsheet::Area filled{1, 1, UsedArea(*block.sheet).last_row, spreadsheet::kColumns};
  const CellBlock with_contents =
      block.At(Shared(block.area, filled).value_or(spreadsheet::Area::Cell(1, 1)));
  HeldHeights heights(with_contents);
  block.document().StayAside();
  As<css::sheet::XSheetOperation>(block.Cells())->clearContents(what);
  heights.Fit();
}

}  // namespace

void ClearCellContents(const CellBlock& block) { ClearFlags(block, kContents); }

void ClearCells(const CellBlock& block) {
  ClearComments(block);
  ClearFlags(block, kContents | kFormats);
  // Formats of columns behind the last one that was ever touched stay otherwise.
  if (block.area.IsWholeRows()) {
    const auto states = As<css::beans::XPropertyState>(block.Cells());
    for (const char* format : kCellFormats) {
      block.document().StayAside();
      states->setPropertyToDefault(OfficeText(format));
    }
  }
}

void DeleteCells(const CellBlock& block) {
  ForgetStepsWithCommentsOf(block);
  const bool are_rows = block.area.IsWholeRows();
  if (!are_rows) SheetConditions(block.sheet).CutBeside(block.area);
  const auto mode = are_rows ? css::sheet::CellDeleteMode_ROWS : css::sheet::CellDeleteMode_UP;
  block.document().StayAside();
  As<css::sheet::XCellRangeMovement>(block.sheet->Get())
      ->removeRange(As<css::sheet::XCellRangeAddressable>(block.Cells())->getRangeAddress(), mode);
  FollowDeletion(block);
}

}  // namespace mirelo::calc
