#include "adapters/calc/charts/document_charts.h"

#include <algorithm>
#include <charconv>
#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/table/XTableCharts.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <string>
#include <utility>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/undo_aside.h"
#include "automation/text.h"
#include "spreadsheet/charts/follow_deletion.h"

namespace mirelo::calc {

using spreadsheet::Chart;

namespace {

constexpr std::string_view kNamed = "Chart ";

Reference<css::table::XTableCharts> TableChartsOf(DocumentSheet& sheet) {
  return As<css::table::XTableChartsSupplier>(sheet.Get())->getCharts();
}

// Of the office's descriptions, one deprecates this; asking for what such shapes can do takes ten times as
// long.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
bool IsEmbedded(const Reference<css::drawing::XShape>& shape) {
  return shape->getShapeType() == "com.sun.star.drawing.OLE2Shape";
}
#pragma GCC diagnostic pop

// 7 of "Chart 7"; 0 of other names.
int NumberIn(std::string_view name) {
  int number = 0;
  if (name.substr(0, kNamed.size()) != kNamed) return 0;
  const std::string_view digits = name.substr(kNamed.size());
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return error == std::errc() && end == digits.data() + digits.size() ? number : 0;
}

}  // namespace

DocumentCharts& DocumentCharts::Of(Document& document) {
  auto& charts = document.Charts();
  if (charts == nullptr) charts = std::make_shared<DocumentCharts>(document);
  return *charts;
}

std::vector<std::shared_ptr<DrawnChart>> DocumentCharts::On(DocumentSheet& sheet) {
  std::vector<std::shared_ptr<DrawnChart>> charts;
  sheet.Get();
  const auto& page = sheet.Page();
  for (sal_Int32 i = 0; i < page->getCount(); ++i) {
    if (auto chart = Find(sheet, As<css::drawing::XShape>(page->getByIndex(i)))) charts.push_back(chart);
  }
  return charts;
}

std::shared_ptr<DrawnChart> DocumentCharts::Find(DocumentSheet& sheet,
                                                 const Reference<css::drawing::XShape>& shape) {
  const auto known = std::ranges::find_if(drawn_, [&](const auto& chart) {
    return &chart->sheet() == &sheet && chart->shape().get() == shape.get();
  });
  if (known != drawn_.end()) return *known;
  const rtl::OUString object = ObjectOf(sheet, shape);
  return object.isEmpty() ? nullptr : Known(sheet, object, shape);
}

rtl::OUString DocumentCharts::ObjectOf(DocumentSheet& sheet,
                                       const Reference<css::drawing::XShape>& shape) const {
  if (!IsEmbedded(shape)) return {};
  rtl::OUString object = Properties(shape).Get("PersistName", rtl::OUString());
  const auto charts = As<css::container::XNameAccess>(TableChartsOf(sheet));
  return charts->hasByName(object) ? object : rtl::OUString();
}

std::shared_ptr<DrawnChart> DocumentCharts::Known(DocumentSheet& sheet, const rtl::OUString& object,
                                                  const Reference<css::drawing::XShape>& shape) {
  const auto known = std::ranges::find_if(
      drawn_, [&](const auto& chart) { return &chart->sheet() == &sheet && chart->object() == object; });
  if (known != drawn_.end() && (*known)->shape() == shape) return *known;
  // The person has put another one in its place, with the same name.
  if (known != drawn_.end()) drawn_.erase(known);
  return drawn_.emplace_back(std::make_shared<DrawnChart>(*this, sheet, object, shape));
}

std::shared_ptr<DrawnChart> DocumentCharts::Add(DocumentSheet& sheet, std::shared_ptr<Chart> chart) {
  chart->name = NextName(sheet);
  const auto place = chart->place;
  const UndoAside aside(document_);
  // Without cells to begin with, a new chart of the office could never plot any.
  const auto first = As<css::sheet::XCellRangeAddressable>(sheet.Get()->getCellRangeByPosition(0, 0, 0, 0));
  const css::table::CellRangeAddress cells = first->getRangeAddress();
  // The office names it: the names of charts, pictures and other objects are one name space of the document.
  TableChartsOf(sheet)->addNewByName(
      "", {LengthOf(place.left), LengthOf(place.top), LengthOf(place.width), LengthOf(place.height)},
      css::uno::Sequence<css::table::CellRangeAddress>(&cells, 1), false, false);
  const auto& page = sheet.Page();
  const auto shape = As<css::drawing::XShape>(page->getByIndex(page->getCount() - 1));
  return drawn_.emplace_back(
      std::make_shared<DrawnChart>(*this, sheet, ObjectOf(sheet, shape), shape, std::move(chart)));
}

std::string DocumentCharts::NextName(DocumentSheet& sheet) {
  int& made = made_[&sheet];
  for (const auto& chart : On(sheet)) made = std::max(made, NumberIn(chart->Name()));
  return std::string(kNamed) + std::to_string(++made);
}

void DocumentCharts::Forget(const DrawnChart& chart) {
  std::erase_if(drawn_, [&](const auto& known) { return known.get() == &chart; });
}

std::shared_ptr<Chart> DocumentCharts::FindSheet(std::string_view name) const {
  const auto found =
      std::ranges::find_if(sheets_, [&](const auto& chart) { return EqualText(chart->name, name); });
  return found == sheets_.end() ? nullptr : *found;
}

std::shared_ptr<SheetCells> DocumentCharts::CellsOf(std::string_view sheet) {
  const auto found = document_.Find(sheet);
  return found == nullptr ? nullptr : CellsOf(*found);
}

std::shared_ptr<SheetCells> DocumentCharts::CellsOf(DocumentSheet& sheet) {
  auto& cells = cells_[&sheet];
  if (cells == nullptr) cells = std::make_shared<SheetCells>(sheet);
  return cells;
}

void DocumentCharts::FollowDeletion(DocumentSheet& sheet, const spreadsheet::Area& gone) {
  const auto cells = CellsOf(sheet);
  for (const auto& chart : sheets_) spreadsheet::FollowDeletion(*chart, *cells, gone);
  for (const auto& chart : drawn_) chart->FollowDeletion(*cells, gone);
}

void DocumentCharts::FollowColumns(const DocumentSheet& sheet) {
  for (const auto& chart : drawn_) {
    if (&chart->sheet() == &sheet) chart->FollowColumns();
  }
}

void DocumentCharts::Draw(bool on) {
  draws_ = on;
  if (!on) return;
  const auto drawn = drawn_;  // what is gone is taken off the list meanwhile
  for (const auto& chart : drawn) {
    if (!chart->DrawWhatWaits()) Forget(*chart);
  }
}

}  // namespace mirelo::calc
