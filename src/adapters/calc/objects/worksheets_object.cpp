#include "adapters/calc/objects/worksheets_object.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <string>

#include "adapters/calc/objects/document_sheet.h"
#include "adapters/calc/objects/floating_objects.h"
#include "adapters/calc/objects/worksheet_object.h"

namespace mirelo::calc {

namespace excel = host::excel;

namespace {

Reference<css::container::XIndexAccess> SheetsOf(const Document& document) {
  return As<css::container::XIndexAccess>(document.uno()->getSheets());
}

// "Sheet" with the next number that is free, from that of the new sheet on.
std::string FreeName(const std::shared_ptr<Document>& document) {
  for (sal_Int32 number = SheetsOf(*document)->getCount() + 1;; ++number) {
    std::string name = "Sheet" + std::to_string(number);
    if (document->Find(name) == nullptr && FindChartSheet(document, name) == nullptr) return name;
  }
}

}  // namespace

std::int32_t WorksheetsObject::Count() {
  return document_->Ask([&] { return SheetsOf(*document_)->getCount(); });
}

std::shared_ptr<excel::Worksheet> WorksheetsObject::Item(std::int32_t index) {
  return document_->Ask([&] {
    const auto tabs = SheetsOf(*document_);
    if (index < 1 || index > tabs->getCount()) throw Errors::SubscriptOutOfRange();
    return std::make_shared<WorksheetObject>(
        document_->SheetOf(As<css::sheet::XSpreadsheet>(tabs->getByIndex(index - 1))));
  });
}

std::shared_ptr<excel::Worksheet> WorksheetsObject::Item(std::string_view name) {
  return document_->Ask([&] {
    auto sheet = document_->Find(name);
    if (sheet == nullptr) throw Errors::SubscriptOutOfRange();
    return std::make_shared<WorksheetObject>(std::move(sheet));
  });
}

std::shared_ptr<excel::Worksheet> WorksheetsObject::Add() {
  return document_->Ask(
      [&] { return std::make_shared<WorksheetObject>(document_->AddSheet(FreeName(document_))); });
}

}  // namespace mirelo::calc
