#include "libreoffice/functions/formula_reader.h"

#include <algorithm>
#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/theGlobalEventBroadcaster.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/FormulaResult.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

namespace mirelo::libreoffice {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

constexpr sal_Int32 kMostCellsOfAPiece = 500;

}  // namespace

// All documents, those without a window, too.
FormulaReader::FormulaReader(const Reference<css::uno::XComponentContext>& context) {
  const auto documents = css::frame::theGlobalEventBroadcaster::get(context)->createEnumeration();
  while (documents->hasMoreElements()) {
    try {
      Add(Reference<css::uno::XInterface>(documents->nextElement(), UNO_QUERY));
    } catch (const css::uno::Exception&) {  // it is being closed
    }
  }
}

void FormulaReader::Add(const Reference<css::uno::XInterface>& document) {
  const Reference<css::sheet::XSpreadsheetDocument> spreadsheet(document, UNO_QUERY);
  if (!spreadsheet.is()) return;
  const Reference<css::sheet::XCalculatable> calculated(document, UNO_QUERY_THROW);
  if (!calculated->isAutomaticCalculationEnabled()) {
    has_left_out_ = true;
    return;
  }
  const Reference<css::container::XIndexAccess> sheets(spreadsheet->getSheets(), UNO_QUERY_THROW);
  for (sal_Int32 i = 0; i < sheets->getCount(); ++i)
    Add(Reference<css::sheet::XSpreadsheet>(sheets->getByIndex(i), UNO_QUERY_THROW));
}

void FormulaReader::Add(const Reference<css::sheet::XSpreadsheet>& sheet) {
  const Reference<css::sheet::XCellRangesQuery> query(sheet, UNO_QUERY_THROW);
  const auto formulas = query->queryContentCells(css::sheet::CellFlags::FORMULA);
  for (const css::table::CellRangeAddress& range : formulas->getRangeAddresses()) {
    const sal_Int32 columns = range.EndColumn - range.StartColumn + 1;
    const sal_Int32 rows = std::max<sal_Int32>(1, kMostCellsOfAPiece / columns);
    for (sal_Int32 row = range.StartRow; row <= range.EndRow; row += rows) {
      css::table::CellRangeAddress piece = range;
      piece.StartRow = row;
      piece.EndRow = std::min(range.EndRow, row + rows - 1);
      pieces_.push_back({sheet, piece});
    }
  }
}

bool FormulaReader::ReadOn(std::chrono::milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (read_ < pieces_.size()) {
    const auto& [sheet, cells] = pieces_[read_++];
    try {
      const Reference<css::sheet::XCellRangesQuery> query(
          sheet->getCellRangeByPosition(cells.StartColumn, cells.StartRow, cells.EndColumn, cells.EndRow),
          UNO_QUERY_THROW);
      query->queryFormulaCells(css::sheet::FormulaResult::ERROR);
    } catch (const css::uno::Exception&) {  // the sheet is gone meanwhile
    }
    if (std::chrono::steady_clock::now() > end) break;
  }
  return read_ < pieces_.size();
}

}  // namespace mirelo::libreoffice
