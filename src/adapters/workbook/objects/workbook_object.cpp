#include "adapters/workbook/objects/workbook_object.h"

#include "adapters/workbook/objects/worksheet_object.h"
#include "adapters/workbook/objects/worksheets_object.h"

namespace mirelo::workbook {

std::string WorkbookObject::Name() { return book_->name; }

std::shared_ptr<host::excel::Worksheets> WorkbookObject::Worksheets() {
  return std::make_shared<WorksheetsObject>(book_);
}

std::shared_ptr<host::excel::Worksheet> WorkbookObject::ActiveSheet() {
  return std::make_shared<WorksheetObject>(book_, book_->sheets[book_->active]);
}

}  // namespace mirelo::workbook
