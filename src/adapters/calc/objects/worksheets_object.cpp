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

// "Sheet" with the next number that is free.
std::string FreeName(const std::shared_ptr<Document>& document) {
  for (int number = 1;; ++number) {
    std::string name = "Sheet" + std::to_string(number);
    if (document->Find(name) == nullptr && FindChartSheet(document, name) == nullptr) return name;
  }
}

}  // namespace

std::int32_t WorksheetsObject::Count() {
  return document_->Ask(
      [&] { return As<css::container::XIndexAccess>(document_->uno()->getSheets())->getCount(); });
}

std::shared_ptr<excel::Worksheet> WorksheetsObject::Item(std::int32_t index) {
  return document_->Ask([&] {
    const auto tabs = As<css::container::XIndexAccess>(document_->uno()->getSheets());
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
