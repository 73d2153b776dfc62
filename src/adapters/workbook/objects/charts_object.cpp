#include "adapters/workbook/objects/charts_object.h"
#include "adapters/workbook/objects/book_chart.h"

#include <cstddef>

#include "adapters/workbook/rules.h"
#include "automation/runtime_error.h"
#include "spreadsheet/charts/chart_object.h"

namespace mirelo::workbook {

std::int32_t ChartsObject::Count() { return static_cast<std::int32_t>(book_->chart_sheets.size()); }

std::shared_ptr<host::excel::Chart> ChartsObject::Item(std::int32_t index) {
  if (index < 1 || index > Count()) throw Errors::SubscriptOutOfRange();
  return std::make_shared<ChartObject>(
      PlaceOf(book_, nullptr, book_->chart_sheets[static_cast<std::size_t>(index) - 1]));
}

std::shared_ptr<host::excel::Chart> ChartsObject::Item(std::string_view name) {
  auto chart = book_->FindChartSheet(name);
  if (chart == nullptr) throw Errors::SubscriptOutOfRange();
  return std::make_shared<ChartObject>(PlaceOf(book_, nullptr, std::move(chart)));
}

std::shared_ptr<host::excel::Chart> ChartsObject::Add() {
  return std::make_shared<ChartObject>(PlaceOf(book_, nullptr, book_->AddChartSheet()));
}

}  // namespace mirelo::workbook
