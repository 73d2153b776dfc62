#include "adapters/workbook/objects/book_chart.h"

#include <algorithm>
#include <string>

#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/objects/range_object.h"
#include "adapters/workbook/objects/workbook_object.h"
#include "adapters/workbook/objects/worksheet_object.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/sheet_name.h"
#include "automation/runtime_error.h"
#include "spreadsheet/charts/chart_layout.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/refusals.h"

namespace mirelo::workbook {

std::vector<std::shared_ptr<Chart>>& BookChart::All() const {
  if (sheet_ != nullptr) return sheet_->charts.all;
  return book_->chart_sheets;
}

Chart& BookChart::Get() {
  Index();
  return *chart_;
}

std::int32_t BookChart::Index() {
  const auto& all = All();
  const auto found = std::find(all.begin(), all.end(), chart_);
  if (found == all.end()) throw Refusals::ChartGone();
  return static_cast<std::int32_t>(found - all.begin()) + 1;
}

void BookChart::Select() {
  Get();
  if (sheet_ == nullptr) {
    book_->front_chart = chart_;
    return;
  }
  if (sheet_->hidden) throw Refusals::ChartOnAHiddenSheet();
  book_->BringToFront(*sheet_);
  sheet_->selected_chart = chart_;
  sheet_->selected_comment.reset();
}

void BookChart::Delete() {
  Get();
  std::erase(All(), chart_);
}

std::shared_ptr<host::excel::Worksheet> BookChart::Worksheet() {
  if (sheet_ == nullptr) return nullptr;
  return std::make_shared<WorksheetObject>(book_, sheet_);
}

std::shared_ptr<host::excel::Workbook> BookChart::Workbook() {
  return std::make_shared<WorkbookObject>(book_);
}

ChartBox BookChart::WholeSheet() {
  return {0, 0, WidthOfColumns(*sheet_, 1, kColumns), HeightOfRows(*sheet_, 1, kRows)};
}

void BookChart::Rename(std::string_view name) {
  Chart& chart = Get();
  const std::string_view objection = NameObjection(*book_, chart, name);
  if (!objection.empty()) throw Refused(std::string(objection));
  chart.name = name;
}

std::shared_ptr<ChartHome> BookChart::MoveTo(std::string_view worksheet) {
  Chart& chart = Get();
  const std::shared_ptr<Sheet> sheet = book_->FindSheet(worksheet);
  if (sheet == nullptr) throw Errors::SubscriptOutOfRange();
  if (sheet->hidden) throw Refusals::ChartToAHiddenSheet();

  std::erase(All(), chart_);
  sheet->charts.all.push_back(chart_);
  chart.name = "Chart " + std::to_string(++sheet->charts.made);
  chart.place.left = MiddleOf(kWindowWidth, chart.place.width);
  chart.place.top = MiddleOf(kWindowHeight, chart.place.height);
  auto there = std::make_shared<BookChart>(book_, sheet, chart_);
  there->Select();
  return there;
}

std::optional<PlottedCells> BookChart::CellsOf(host::excel::Range& range) {
  const auto* cells = dynamic_cast<const RangeObject*>(&range);
  if (cells == nullptr || cells->block().book != book_) return std::nullopt;
  return PlottedCells{cells->block().sheet, cells->block().area};
}

}  // namespace mirelo::workbook
