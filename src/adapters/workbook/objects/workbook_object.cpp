#include "adapters/workbook/objects/workbook_object.h"
#include "adapters/workbook/objects/book_chart.h"

#include "adapters/workbook/objects/charts_object.h"
#include "adapters/workbook/objects/worksheet_object.h"
#include "adapters/workbook/objects/worksheets_object.h"
#include "adapters/workbook/rules.h"
#include "automation/runtime_error.h"
#include "spreadsheet/charts/chart_object.h"

namespace mirelo::workbook {

std::string WorkbookObject::Name() { return book_->name; }

std::shared_ptr<host::excel::Worksheets> WorkbookObject::Worksheets() {
  return std::make_shared<WorksheetsObject>(book_);
}

std::shared_ptr<host::excel::Charts> WorkbookObject::Charts() {
  return std::make_shared<ChartsObject>(book_);
}

std::shared_ptr<host::excel::Sheet> WorkbookObject::Sheets(std::string_view name) {
  if (auto sheet = book_->FindSheet(name)) return std::make_shared<WorksheetObject>(book_, std::move(sheet));
  if (auto chart = book_->FindChartSheet(name))
    return std::make_shared<ChartObject>(PlaceOf(book_, nullptr, std::move(chart)));
  throw Errors::SubscriptOutOfRange();
}

std::shared_ptr<host::excel::Sheet> WorkbookObject::ActiveSheet() {
  if (book_->front_chart != nullptr)
    return std::make_shared<ChartObject>(PlaceOf(book_, nullptr, book_->front_chart));
  return std::make_shared<WorksheetObject>(book_, book_->FrontSheet());
}

}  // namespace mirelo::workbook
