#include "adapters/calc/objects/workbook_object.h"

#include "adapters/calc/objects/floating_objects.h"
#include "adapters/calc/objects/front.h"
#include "adapters/calc/objects/worksheet_object.h"
#include "adapters/calc/objects/worksheets_object.h"

namespace mirelo::calc {

namespace excel = host::excel;

std::string WorkbookObject::Name() {
  return document_->Ask([&] {
    const std::string name = document_->FileName();
    return name.empty() ? "Book1" : name;
  });
}

std::shared_ptr<excel::Worksheets> WorkbookObject::Worksheets() {
  return std::make_shared<WorksheetsObject>(document_);
}

std::shared_ptr<excel::Charts> WorkbookObject::Charts() {
  return document_->Ask([&] { return ChartsOf(document_); });
}

std::shared_ptr<excel::Sheet> WorkbookObject::Sheets(std::string_view name) {
  return document_->Ask([&]() -> std::shared_ptr<excel::Sheet> {
    if (auto chart = FindChartSheet(document_, name)) return chart;
    auto sheet = document_->Find(name);
    if (sheet == nullptr) throw Errors::SubscriptOutOfRange();
    return std::make_shared<WorksheetObject>(std::move(sheet));
  });
}

std::shared_ptr<excel::Sheet> WorkbookObject::ActiveSheet() {
  return document_->Ask([&]() -> std::shared_ptr<excel::Sheet> {
    if (auto chart = document_->Front().ChartSheet()) return chart;
    return std::make_shared<WorksheetObject>(document_->Front().Sheet());
  });
}

}  // namespace mirelo::calc
