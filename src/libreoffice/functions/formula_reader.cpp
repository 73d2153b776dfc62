#include "libreoffice/functions/formula_reader.h"

#include <algorithm>
#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/theGlobalEventBroadcaster.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/FormulaResult.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <utility>

namespace mirelo::libreoffice {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

// What takes longer is a large portion, and what takes less than half of that a small one.
constexpr std::chrono::milliseconds kOfAPortion{2};

Reference<css::table::XCellRange> RangeIn(const Reference<css::sheet::XSpreadsheet>& sheet,
                                          const css::table::CellRangeAddress& cells) {
  return sheet->getCellRangeByPosition(cells.StartColumn, cells.StartRow, cells.EndColumn, cells.EndRow);
}

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
    sheets_.emplace_back(sheets->getByIndex(i), UNO_QUERY_THROW);
}

bool FormulaReader::ReadOn(std::chrono::milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (!sheets_.empty() && std::chrono::steady_clock::now() < end) {
    try {
      ReadSome();
    } catch (const css::uno::Exception&) {  // the sheet is gone meanwhile
      formulas_.clear();
      unknown_.clear();
    }
    if (!formulas_.empty() || !unknown_.empty()) continue;
    sheets_.pop_back();
    is_begun_ = false;
  }
  return !sheets_.empty();
}

void FormulaReader::ReadSome() {
  const auto start = std::chrono::steady_clock::now();
  if (!formulas_.empty()) {
    const Reference<css::sheet::XCellRangesQuery> cells(
        RangeIn(sheets_.back(), TakeRows(formulas_, at_once_)), UNO_QUERY_THROW);
    cells->queryFormulaCells(css::sheet::FormulaResult::ERROR);
    return at_once_.Note(std::chrono::steady_clock::now() - start);
  }
  LookThroughSome();
  looked_through_at_once_.Note(std::chrono::steady_clock::now() - start);
}

void FormulaReader::LookThroughSome() {
  const Sheet& sheet = sheets_.back();
  if (!std::exchange(is_begun_, true)) {
    const Reference<css::sheet::XUsedAreaCursor> cursor(sheet->createCursor(), UNO_QUERY_THROW);
    cursor->gotoStartOfUsedArea(false);
    cursor->gotoEndOfUsedArea(true);
    unknown_.push_back(
        Reference<css::sheet::XCellRangeAddressable>(cursor, UNO_QUERY_THROW)->getRangeAddress());
  }
  const Reference<css::sheet::XCellRangesQuery> cells(
      RangeIn(sheet, TakeRows(unknown_, looked_through_at_once_)), UNO_QUERY_THROW);
  const auto found = cells->queryContentCells(css::sheet::CellFlags::FORMULA)->getRangeAddresses();
  formulas_.assign(found.begin(), found.end());
}

FormulaReader::Cells FormulaReader::TakeRows(std::vector<Cells>& from, const Portion& portion) {
  Cells& left = from.back();
  Cells taken = left;
  taken.EndRow = std::min(left.EndRow, left.StartRow + portion.Rows(left) - 1);
  left.StartRow = taken.EndRow + 1;
  if (left.StartRow > left.EndRow) from.pop_back();
  return taken;
}

sal_Int32 FormulaReader::Portion::Rows(const Cells& cells) const {
  return std::max<sal_Int32>(1, cells_ / (cells.EndColumn - cells.StartColumn + 1));
}

void FormulaReader::Portion::Note(std::chrono::steady_clock::duration taken) {
  if (taken > kOfAPortion) cells_ = std::max<sal_Int32>(1, cells_ / 2);
  if (taken < kOfAPortion / 2) cells_ = std::min(most_, cells_ * 2);
}

}  // namespace mirelo::libreoffice
