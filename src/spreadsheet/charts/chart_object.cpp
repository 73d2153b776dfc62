#include "spreadsheet/charts/chart_object.h"

#include <cstddef>
#include <optional>
#include <utility>

#include "host/excel/chart_object.h"
#include "spreadsheet/charts/axis_object.h"
#include "spreadsheet/charts/chart_areas.h"
#include "spreadsheet/charts/chart_title_object.h"
#include "spreadsheet/charts/series_object.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/pixels.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

namespace excel = host::excel;

namespace {

// The axis of a chart. Error 1004 for what is no kind of axis.
ChartAxis spreadsheet::Chart::*AxisOf(excel::XlAxisType type) {
  if (type == excel::xlCategory) return &spreadsheet::Chart::category;
  if (type == excel::xlValue) return &spreadsheet::Chart::value;
  throw Refused("This is no kind of axis.");
}

class ChartHolder final : public excel::ChartObject {
 public:
  explicit ChartHolder(ChartPlace place) : place_(std::move(place)) {}

  std::shared_ptr<excel::Worksheet> Parent() override {
    place_.Get();
    return place_.home().Worksheet();
  }

 private:
  ChartPlace place_;
};

}  // namespace

std::string ChartObject::Name() {
  const spreadsheet::Chart& chart = place_.Get();
  const auto worksheet = place_.home().Worksheet();
  return worksheet == nullptr ? chart.name : worksheet->Name() + " " + chart.name;
}

void ChartObject::Name(std::string_view name) {
  place_.Get();
  if (place_.home().Worksheet() != nullptr) throw Refusals::ChartNamedByItsShape();
  place_.home().Rename(name);
}

std::shared_ptr<Object> ChartObject::Parent() {
  place_.Get();
  if (place_.home().Worksheet() == nullptr) return place_.home().Workbook();
  return std::make_shared<ChartHolder>(place_);
}

excel::XlChartType ChartObject::ChartType() { return place_.Get().kind->type; }

void ChartObject::ChartType(excel::XlChartType type) {
  place_.Get();
  const ChartKind* kind = KindOf(type);
  if (kind == nullptr) throw Refused("Charts of this type cannot be drawn.");
  place_.Change([kind](spreadsheet::Chart& chart) { chart.kind = kind; });
}

void ChartObject::SetSourceData(excel::Range& source, excel::XlRowCol by) {
  place_.Get();
  if (by != excel::xlColumns) throw Refused("Only columns can become series.");
  const auto cells = place_.home().CellsOf(source);
  if (!cells) throw Refused("A chart plots cells of its own workbook.");
  const Area& area = cells->area;
  if (area.Columns() > kMostSeries) throw Refusals::TooManySeries();

  place_.Change([&](spreadsheet::Chart& chart) {
    chart.series.resize(static_cast<std::size_t>(area.Columns()));
    std::int32_t column = area.first_column;
    for (ChartSeries& series : chart.series) {
      series.values = Area{area.first_row, column, area.last_row, column};
      series.sheet = cells->sheet;
      ++column;
    }
  });
}

std::shared_ptr<excel::Chart> ChartObject::Location(excel::XlChartLocation where, std::string_view name) {
  place_.Get();
  if (where != excel::xlLocationAsObject) throw Refused("A chart can only be moved onto a worksheet.");
  return std::make_shared<ChartObject>(ChartPlace(place_.home().MoveTo(name)));
}

bool ChartObject::HasAxis(excel::XlAxisType type, excel::XlAxisGroup group) {
  const spreadsheet::Chart& chart = place_.Get();
  const ChartAxis& axis = chart.*AxisOf(type);
  return group == excel::xlPrimary && axis.on;
}

void ChartObject::HasAxis(excel::XlAxisType type, excel::XlAxisGroup group, bool on) {
  place_.Get();
  const auto axis = AxisOf(type);
  if (group == excel::xlPrimary) {
    place_.Change([&](spreadsheet::Chart& chart) { (chart.*axis).on = on; });
  } else if (on) {
    throw Refusals::NoSecondaryAxes();
  }
}

std::shared_ptr<excel::Axis> ChartObject::Axes(excel::XlAxisType type, excel::XlAxisGroup group) {
  place_.Get();
  if (group != excel::xlPrimary) throw Refusals::NoSecondaryAxes();
  return std::make_shared<AxisObject>(ChartPart<ChartAxis>(
      place_, [axis = AxisOf(type)](spreadsheet::Chart& chart) -> ChartAxis& { return chart.*axis; }));
}

void ChartObject::HasTitle(bool on) {
  place_.Change([on](spreadsheet::Chart& chart) {
    if (!on) {
      chart.title.reset();
    } else if (!chart.title) {
      chart.title.emplace();
    }
  });
}

std::shared_ptr<excel::ChartTitle> ChartObject::ChartTitle() {
  if (!HasTitle()) throw Refusals::ChartWithoutTitle();
  return std::make_shared<ChartTitleObject>(place_);
}

std::shared_ptr<excel::ChartArea> ChartObject::ChartArea() {
  place_.Get();
  return std::make_shared<ChartAreaObject>(place_);
}

std::shared_ptr<excel::PlotArea> ChartObject::PlotArea() {
  place_.Get();
  return std::make_shared<PlotAreaObject>(place_);
}

std::shared_ptr<excel::Series> ChartObject::SeriesCollection(std::int32_t index) {
  const auto count = place_.Get().series.size();
  if (index < 1 || static_cast<std::size_t>(index) > count) throw Refusals::NoSuchSeries();
  return std::make_shared<SeriesObject>(SeriesPlace(place_, static_cast<std::size_t>(index) - 1));
}

}  // namespace mirelo::spreadsheet
