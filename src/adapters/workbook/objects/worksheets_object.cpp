#include "adapters/workbook/objects/worksheets_object.h"

#include <cstddef>

#include "adapters/workbook/objects/worksheet_object.h"
#include "automation/runtime_error.h"

namespace mirelo::workbook {

std::int32_t WorksheetsObject::Count() { return static_cast<std::int32_t>(book_->sheets.size()); }

std::shared_ptr<host::excel::Worksheet> WorksheetsObject::Item(std::int32_t index) {
  if (index < 1 || index > Count()) throw Errors::SubscriptOutOfRange();
  return std::make_shared<WorksheetObject>(book_, book_->sheets[static_cast<std::size_t>(index) - 1]);
}

std::shared_ptr<host::excel::Worksheet> WorksheetsObject::Item(std::string_view name) {
  auto sheet = book_->FindSheet(name);
  if (sheet == nullptr) throw Errors::SubscriptOutOfRange();
  return std::make_shared<WorksheetObject>(book_, std::move(sheet));
}

std::shared_ptr<host::excel::Worksheet> WorksheetsObject::Add() {
  return std::make_shared<WorksheetObject>(book_, book_->AddSheet());
}

}  // namespace mirelo::workbook
