#include "adapters/calc/charts/chart_homes.h"

#include <algorithm>
#include <string>

#include "adapters/calc/charts/document_charts.h"
#include "adapters/calc/objects/front.h"
#include "adapters/calc/objects/range_object.h"
#include "adapters/calc/objects/window_object.h"
#include "adapters/calc/objects/workbook_object.h"
#include "adapters/calc/objects/worksheet_object.h"
#include "automation/runtime_error.h"
#include "spreadsheet/charts/chart_layout.h"
#include "spreadsheet/charts/chart_object.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/refusals.h"
#include "spreadsheet/sheet_name.h"

namespace mirelo::calc {

using spreadsheet::Area;
using spreadsheet::Chart;
using spreadsheet::ChartBox;
using spreadsheet::ChartHome;
using spreadsheet::PlottedCells;
using spreadsheet::Refused;

namespace Refusals = spreadsheet::Refusals;

namespace {

std::optional<PlottedCells> CellsIn(Document& document, host::excel::Range& range) {
  const auto* cells = dynamic_cast<const RangeObject*>(&range);
  if (cells == nullptr || &cells->block().document() != &document) return std::nullopt;
  return PlottedCells{DocumentCharts::Of(document).CellsOf(*cells->block().sheet), cells->block().area};
}

void CheckChartsOf(DocumentSheet& sheet) {
  sheet.document().CheckNotOnlyForReading();
  if (sheet.IsProtected()) throw SheetProtected(sheet.Name());
}

// Error 9 when no worksheet bears the name, 1004 where no chart can be put.
std::shared_ptr<DocumentSheet> SheetFor(Document& document, std::string_view name) {
  auto sheet = document.Find(name);
  if (sheet == nullptr) throw Errors::SubscriptOutOfRange();
  if (sheet->IsHidden()) throw Refusals::ChartToAHiddenSheet();
  CheckChartsOf(*sheet);
  return sheet;
}

// Into the middle of what the window shows.
std::shared_ptr<ChartHome> PutOn(const std::shared_ptr<DocumentSheet>& sheet, std::shared_ptr<Chart> chart) {
  Document& document = sheet->document();
  document.Front().Show(*sheet);
  const auto seen = WindowObject(document.shared_from_this()).VisibleRange();
  chart->place.left = std::max(spreadsheet::MiddleOf(seen->Width(), chart->place.width), 0.0);
  chart->place.top = std::max(spreadsheet::MiddleOf(seen->Height(), chart->place.height), 0.0);
  auto there =
      std::make_shared<SheetChart>(sheet, DocumentCharts::Of(document).Add(*sheet, std::move(chart)));
  there->Select();
  return there;
}

}  // namespace

template <class Body>
decltype(auto) SheetChart::Ask(Body&& body) const {
  return sheet_->document().Ask(std::forward<Body>(body));
}

Chart& SheetChart::Get() {
  return Ask([&]() -> Chart& { return chart_->Get(); });
}

void SheetChart::Changed() {
  Ask([&] {
    sheet_->document().CheckNotOnlyForReading();
    chart_->Changed();
  });
}

std::int32_t SheetChart::Index() {
  return Ask([&] {
    const auto charts = DocumentCharts::Of(sheet_->document()).On(*sheet_);
    const auto found = std::ranges::find(charts, chart_);
    if (found == charts.end()) throw Refusals::ChartGone();
    return static_cast<std::int32_t>(found - charts.begin()) + 1;
  });
}

void SheetChart::Select() {
  Ask([&] {
    chart_->Get();
    if (sheet_->IsHidden()) throw Refusals::ChartOnAHiddenSheet();
    sheet_->document().Front().Select(*sheet_, chart_->shape());
  });
}

void SheetChart::Delete() {
  Ask([&] {
    CheckChartsOf(*sheet_);
    chart_->Delete();
  });
}

std::shared_ptr<host::excel::Worksheet> SheetChart::Worksheet() {
  return std::make_shared<WorksheetObject>(sheet_);
}

std::shared_ptr<host::excel::Workbook> SheetChart::Workbook() {
  return std::make_shared<WorkbookObject>(sheet_->document().shared_from_this());
}

ChartBox SheetChart::WholeSheet() {
  const auto cells = RangeOf({sheet_, Area::Sheet()});
  return {0, 0, cells->Width(), cells->Height()};
}

void SheetChart::Rename(std::string_view /*name*/) { throw Refusals::ChartNamedByItsShape(); }

std::shared_ptr<ChartHome> SheetChart::MoveTo(std::string_view worksheet) {
  return Ask([&] {
    chart_->Get();
    const auto sheet = SheetFor(sheet_->document(), worksheet);
    CheckChartsOf(*sheet_);
    // The object that was there until now is dead, the chart goes on.
    const auto moved = std::make_shared<Chart>(*chart_->model());
    chart_->Delete();
    return PutOn(sheet, moved);
  });
}

std::optional<PlottedCells> SheetChart::CellsOf(host::excel::Range& range) {
  return Ask([&] { return CellsIn(sheet_->document(), range); });
}

Chart& ChartSheet::Get() {
  Index();
  return *chart_;
}

std::shared_ptr<host::excel::Workbook> ChartSheet::Workbook() {
  return std::make_shared<WorkbookObject>(document_);
}

std::int32_t ChartSheet::Index() {
  return document_->Ask([&] {
    const auto& all = DocumentCharts::Of(*document_).Sheets();
    const auto found = std::ranges::find(all, chart_);
    if (found == all.end()) throw Refusals::ChartGone();
    return static_cast<std::int32_t>(found - all.begin()) + 1;
  });
}

void ChartSheet::Select() {
  Get();
  document_->Ask([&] {
    document_->Front().ShowChartSheet([document = document_.get(), chart = chart_] {
      return std::make_shared<spreadsheet::ChartObject>(PlaceOf(document->shared_from_this(), chart));
    });
  });
}

void ChartSheet::Delete() {
  Get();
  std::erase(DocumentCharts::Of(*document_).Sheets(), chart_);
}

void ChartSheet::Rename(std::string_view name) {
  Chart& chart = Get();
  document_->Ask([&] {
    const std::string_view objection = spreadsheet::NameObjection(name, [&](std::string_view wanted) {
      const auto other = DocumentCharts::Of(*document_).FindSheet(wanted);
      return document_->Find(wanted) != nullptr || (other != nullptr && other != chart_);
    });
    if (!objection.empty()) throw Refused(std::string(objection));
    chart.name = name;
  });
}

std::shared_ptr<ChartHome> ChartSheet::MoveTo(std::string_view worksheet) {
  Get();
  return document_->Ask([&] {
    const auto sheet = SheetFor(*document_, worksheet);
    std::erase(DocumentCharts::Of(*document_).Sheets(), chart_);
    return PutOn(sheet, chart_);
  });
}

std::optional<PlottedCells> ChartSheet::CellsOf(host::excel::Range& range) {
  return document_->Ask([&] { return CellsIn(*document_, range); });
}

}  // namespace mirelo::calc
