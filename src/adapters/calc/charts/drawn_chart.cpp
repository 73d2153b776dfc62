#include "adapters/calc/charts/drawn_chart.h"

#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/document/XEmbeddedObjectSupplier.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <cstddef>
#include <utility>

#include "adapters/calc/charts/chart_painter.h"
#include "adapters/calc/charts/chart_reader.h"
#include "adapters/calc/charts/document_charts.h"
#include "adapters/calc/charts/plotted_cells.h"
#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/front.h"
#include "adapters/calc/objects/undo_aside.h"
#include "spreadsheet/charts/follow_deletion.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

using spreadsheet::Chart;
using spreadsheet::ChartBox;

namespace {

Reference<css::container::XNameAccess> ChartsIn(DocumentSheet& sheet) {
  return As<css::container::XNameAccess>(As<css::table::XTableChartsSupplier>(sheet.Get())->getCharts());
}

bool StandsByPage(const Reference<css::drawing::XShape>& shape) {
  return IfAs<css::sheet::XSpreadsheet>(Properties(shape).Get("Anchor")).is();
}

}  // namespace

DrawnChart::DrawnChart(DocumentCharts& charts, DocumentSheet& sheet, const rtl::OUString& object,
                       const Reference<css::drawing::XShape>& shape)
    : charts_(charts), sheet_(sheet), object_(object), office_{shape, {}} {}

DrawnChart::DrawnChart(DocumentCharts& charts, DocumentSheet& sheet, const rtl::OUString& object,
                       const Reference<css::drawing::XShape>& shape, std::shared_ptr<Chart> chart)
    : charts_(charts), sheet_(sheet), object_(object), office_{shape, {}}, chart_(std::move(chart)) {
  Open();
  // As little as the office can be asked for is more than an empty chart has.
  office_.Whole().Set("HasLegend", true);
  office_.Diagram().Set("HasXAxisGrid", false);
  office_.Diagram().Set("HasYAxisGrid", false);
  Properties(office_.shape).Set("Name", OfficeText(chart_->name));
  painted_.name = chart_->name;
  painted_.place = {};
  painted_.series.resize(office_.Series().size());
  Paint();
}

void DrawnChart::Open() {
  const auto charts = ChartsIn(sheet_);
  office_.document = As<css::chart::XChartDocument>(
      As<css::document::XEmbeddedObjectSupplier>(charts->getByName(object_))->getEmbeddedObject());
}

bool DrawnChart::IsThere() const {
  try {
    return sheet_.Holds(office_.shape);
  } catch (const RuntimeError&) {  // its sheet was deleted
    return false;
  }
}

std::string DrawnChart::Name() const {
  const rtl::OUString name = Properties(office_.shape).Get("Name", rtl::OUString());
  return TextOf(name.isEmpty() ? object_ : name);
}

template <class Body>
void DrawnChart::WithOpenDocument(Body&& body) {
  try {
    body();
  } catch (const css::lang::DisposedException&) {
    if (!IsThere()) throw;
    Open();
    body();
  }
}

// Painting a chart takes hundreds of uses. Until charts are drawn again nobody else changes it, but macros
// may take it away; then its page holds fewer drawings.
Chart& DrawnChart::Get() {
  const sal_Int32 drawings = sheet_.Page()->getCount();
  if (is_read_ && !charts_.Draws() && drawings == drawings_) return *chart_;
  if (!IsThere()) throw spreadsheet::Refusals::ChartGone();
  if (charts_.Draws() || !is_read_) WithOpenDocument([&] { Read(); });
  is_read_ = !charts_.Draws();
  drawings_ = drawings;
  return *chart_;
}

void DrawnChart::Meet() {
  Open();
  chart_ = std::make_shared<Chart>(ReadChart(office_, charts_));
  painted_ = *chart_;
  place_ = painted_.place;
  cells_ = CellsOfSeries(office_);
}

void DrawnChart::Read() {
  if (chart_ == nullptr) Meet();
  painted_.name = chart_->name = Name();

  if (const auto place = PlaceOf(office_); place != place_) {
    place_ = painted_.place = chart_->place = place;
  }
  if (auto cells = CellsOfSeries(office_); cells != cells_) {
    ReadCells(cells, cells_, charts_, *chart_);
    ReadCells(cells, cells_, charts_, painted_);
    cells_ = std::move(cells);
  }
  ReadWhatAPersonChanged(office_, *chart_, painted_);
  MoveWithColumns();
}

void DrawnChart::MoveWithColumns() {
  if (!anchor_ || anchor_->place() != chart_->place) {
    anchor_ = ColumnAnchor::Of(sheet_, chart_->place);
    return;
  }
  try {
    const ChartBox place = anchor_->Follow();
    if (place == chart_->place) return;
    if (StandsByPage(office_.shape)) {
      chart_->place = place;
    } else {
      anchor_.reset();
    }
  } catch (const css::lang::DisposedException&) {
    throw;
  } catch (const css::uno::Exception&) {
    anchor_.reset();  // it stays where it is when its own column is taken away
  }
}

void DrawnChart::FollowColumns() {
  if (chart_ == nullptr || !IsThere()) return;
  Get();
  MoveWithColumns();
  if (chart_->place != painted_.place) Changed();
}

void DrawnChart::Changed() {
  if (charts_.Draws()) {
    WithOpenDocument([&] { Paint(); });
  } else {
    waits_ = true;
  }
}

bool DrawnChart::DrawWhatWaits() {
  is_read_ = false;
  if (!std::exchange(waits_, false)) return true;
  if (!IsThere()) return false;
  WithOpenDocument([&] {
    Read();
    Paint();
  });
  return true;
}

void DrawnChart::Paint() {
  const UndoAside aside(sheet_.document());
  PaintChart(sheet_.document().OfficeContext(), office_, *chart_, painted_);
  place_ = PlaceOf(office_);
  cells_ = CellsOfSeries(office_);
}

void DrawnChart::FollowDeletion(const SheetCells& sheet, const spreadsheet::Area& gone) {
  is_read_ = false;
  if (chart_ == nullptr) return;
  Chart followed = *chart_;
  spreadsheet::FollowDeletion(followed, sheet, gone);
  for (std::size_t i = 0; i < followed.series.size(); ++i) {
    if (followed.series[i].values) continue;
    chart_->series[i].values.reset();
    if (i < painted_.series.size()) painted_.series[i].values.reset();
  }
}

void DrawnChart::Delete() {
  if (!IsThere()) throw spreadsheet::Refusals::ChartGone();
  {
    const UndoAside aside(sheet_.document());
    sheet_.document().Front().Forget(office_.shape);
    // Not by its name from the sheet's charts: that ends the office while it keeps no list of steps.
    sheet_.Page()->remove(office_.shape);
  }
  sheet_.document().ClearUndoList();  // its steps may hold this drawing
  charts_.Forget(*this);
}

}  // namespace mirelo::calc
