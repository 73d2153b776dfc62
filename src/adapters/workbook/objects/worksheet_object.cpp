#include "adapters/workbook/objects/worksheet_object.h"

#include "adapters/workbook/objects/shapes_object.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/sheet_name.h"
#include "spreadsheet/area_rules.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/refusals.h"

namespace mirelo::workbook {

namespace {

using View = RangeObject::View;

}  // namespace

WorksheetObject::RangePtr WorksheetObject::At(const Area& area, View view) const {
  return std::make_shared<RangeObject>(CellBlock{book_, sheet_, area}, view);
}

std::string WorksheetObject::Name() { return sheet_->name; }

void WorksheetObject::Name(std::string_view name) {
  const std::string_view objection = NameObjection(*book_, *sheet_, name);
  if (!objection.empty()) throw Refused(std::string(objection));
  book_->RenameSheet(*sheet_, name);
}

std::int32_t WorksheetObject::Index() { return static_cast<std::int32_t>(book_->IndexOf(*sheet_)) + 1; }

void WorksheetObject::Select() {
  if (sheet_->hidden) throw Refusals::HiddenSheetBroughtToFront();
  book_->BringToFront(*sheet_);
}

WorksheetObject::RangePtr WorksheetObject::Range(std::string_view address) { return At(AreaAt(address)); }

WorksheetObject::RangePtr WorksheetObject::Range(std::string_view first, std::string_view last) {
  return At(Around(AreaAt(first), AreaAt(last)));
}

WorksheetObject::RangePtr WorksheetObject::Range(host::excel::Range& first, host::excel::Range& last) {
  const auto* a = dynamic_cast<const RangeObject*>(&first);
  const auto* b = dynamic_cast<const RangeObject*>(&last);
  if (a == nullptr || b == nullptr || a->block().sheet != sheet_ || b->block().sheet != sheet_) {
    throw Refusals::RangesOfOtherSheets();
  }
  return At(Around(a->block().area, b->block().area));
}

WorksheetObject::RangePtr WorksheetObject::Cells() { return At(Area::Sheet()); }

WorksheetObject::RangePtr WorksheetObject::Cells(std::int32_t row, std::int32_t column) {
  const Area cell = Area::Cell(row, column);
  if (!cell.IsOnSheet()) throw NotOnSheet();
  return At(cell);
}

std::shared_ptr<host::excel::Shapes> WorksheetObject::Shapes() {
  return std::make_shared<ShapesObject>(book_, sheet_);
}

WorksheetObject::RangePtr WorksheetObject::Rows() { return At(Area::Sheet(), View::Rows); }
WorksheetObject::RangePtr WorksheetObject::Columns() { return At(Area::Sheet(), View::Columns); }

WorksheetObject::RangePtr WorksheetObject::Rows(std::string_view rows) {
  return At(RowsAt(rows), View::Rows);
}

WorksheetObject::RangePtr WorksheetObject::Columns(std::string_view columns) {
  return At(ColumnsAt(columns), View::Columns);
}

}  // namespace mirelo::workbook
