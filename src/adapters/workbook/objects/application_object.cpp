#include "adapters/workbook/objects/application_object.h"

#include "adapters/workbook/objects/charts_object.h"
#include "adapters/workbook/objects/shapes_object.h"
#include "adapters/workbook/objects/window_object.h"
#include "adapters/workbook/objects/workbook_object.h"
#include "adapters/workbook/objects/worksheets_object.h"
#include "adapters/workbook/rules.h"
#include "host/excel/shape.h"
#include "spreadsheet/refusals.h"

namespace mirelo::workbook {

namespace excel = host::excel;

std::shared_ptr<excel::Workbook> ApplicationObject::ActiveWorkbook() {
  return std::make_shared<WorkbookObject>(book_);
}

std::shared_ptr<excel::Sheet> ApplicationObject::ActiveSheet() { return ActiveWorkbook()->ActiveSheet(); }

std::shared_ptr<excel::Range> ApplicationObject::ActiveCell() {
  const std::shared_ptr<Sheet> front = book_->FrontSheet();
  if (front == nullptr) return nullptr;
  return FrontWorksheet()->Cells(front->active_cell.row, front->active_cell.column);
}

std::shared_ptr<excel::Selectable> ApplicationObject::Selection() {
  const std::shared_ptr<Sheet> front = book_->FrontSheet();
  if (front == nullptr) return nullptr;
  if (auto shape = SelectedShape(book_, front)) return shape;
  return std::make_shared<RangeObject>(CellBlock{book_, front, front->selection}, RangeObject::View::Cells);
}

std::shared_ptr<excel::Window> ApplicationObject::ActiveWindow() {
  return std::make_shared<WindowObject>(book_);
}

std::shared_ptr<excel::Worksheets> ApplicationObject::Worksheets() {
  return std::make_shared<WorksheetsObject>(book_);
}

std::shared_ptr<excel::Charts> ApplicationObject::Charts() { return std::make_shared<ChartsObject>(book_); }

std::shared_ptr<excel::Range> ApplicationObject::Range(std::string_view address) {
  return FrontWorksheet()->Range(address);
}

std::shared_ptr<excel::Range> ApplicationObject::Cells() { return FrontWorksheet()->Cells(); }

std::shared_ptr<excel::Range> ApplicationObject::Cells(std::int32_t row, std::int32_t column) {
  return FrontWorksheet()->Cells(row, column);
}

std::shared_ptr<WorksheetObject> ApplicationObject::FrontWorksheet() const {
  std::shared_ptr<Sheet> front = book_->FrontSheet();
  if (front == nullptr) throw Refusals::NoCellsInFront();
  return std::make_shared<WorksheetObject>(book_, std::move(front));
}

}  // namespace mirelo::workbook
