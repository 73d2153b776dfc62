#include "adapters/workbook/objects/chart_object.h"

#include <cmath>
#include <cstddef>

#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/objects/axis_object.h"
#include "adapters/workbook/objects/chart_areas.h"
#include "adapters/workbook/objects/chart_title_object.h"
#include "adapters/workbook/objects/range_object.h"
#include "adapters/workbook/objects/series_object.h"
#include "adapters/workbook/objects/worksheet_object.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/sheet_name.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/pixels.h"

namespace mirelo::workbook {

namespace excel = host::excel;

namespace {

constexpr std::int32_t kMostSeries = 255;

// The axis of a chart. Error 1004 for what is no kind of axis.
ChartAxis workbook::Chart::*AxisOf(excel::XlAxisType type) {
  if (type == excel::xlCategory) return &workbook::Chart::category;
  if (type == excel::xlValue) return &workbook::Chart::value;
  throw Refused("This is no kind of axis.");
}

double MiddleOf(double whole, double part) {
  return std::round((whole - part) / 2 / kPointsPerPixel) * kPointsPerPixel;
}

}  // namespace

std::string ChartObject::Name() {
  const workbook::Chart& chart = place_.Get();
  return place_.sheet == nullptr ? chart.name : place_.sheet->name + " " + chart.name;
}

void ChartObject::Name(std::string_view name) {
  workbook::Chart& chart = place_.Get();
  if (place_.sheet != nullptr) throw Refused("A chart on a worksheet has the name of its shape.");
  const std::string_view objection = NameObjection(*place_.book, chart, name);
  if (!objection.empty()) throw Refused(std::string(objection));
  chart.name = name;
}

std::shared_ptr<excel::Sheet> ChartObject::Parent() {
  place_.Get();
  if (place_.sheet == nullptr) return std::make_shared<ChartObject>(place_);
  return std::make_shared<WorksheetObject>(place_.book, place_.sheet);
}

excel::XlChartType ChartObject::ChartType() { return place_.Get().kind->type; }

void ChartObject::ChartType(excel::XlChartType type) {
  workbook::Chart& chart = place_.Get();
  const ChartKind* kind = KindOf(type);
  if (kind == nullptr) throw Refused("Charts of this type cannot be drawn.");
  chart.kind = kind;
}

void ChartObject::SetSourceData(excel::Range& source, excel::XlRowCol by) {
  workbook::Chart& chart = place_.Get();
  if (by != excel::xlColumns) throw Refused("Only columns can become series.");
  const auto* range = dynamic_cast<const RangeObject*>(&source);
  if (range == nullptr || range->block().book != place_.book)
    throw Refused("A chart plots cells of its own workbook.");
  const CellBlock& block = range->block();
  if (block.area.Columns() > kMostSeries) throw Refused("A chart has at most 255 series.");

  chart.series.resize(static_cast<std::size_t>(block.area.Columns()));
  std::int32_t column = block.area.first_column;
  for (ChartSeries& series : chart.series) {
    series.values = Area{block.area.first_row, column, block.area.last_row, column};
    series.sheet = block.sheet;
    ++column;
  }
}

std::shared_ptr<excel::Chart> ChartObject::Location(excel::XlChartLocation where, std::string_view name) {
  place_.Get();
  if (where != excel::xlLocationAsObject) throw Refused("A chart can only be moved onto a worksheet.");
  const ChartPlace there{place_.book, place_.book->FindSheet(name), place_.chart};
  if (there.sheet == nullptr) throw Errors::SubscriptOutOfRange();
  if (there.sheet->hidden) throw Refused("A chart cannot be moved onto a hidden sheet.");

  std::erase(place_.All(), place_.chart);
  SheetCharts& charts = there.sheet->charts;
  charts.all.push_back(place_.chart);
  workbook::Chart& chart = *place_.chart;
  chart.name = "Chart " + std::to_string(++charts.made);
  chart.place.left = MiddleOf(kWindowWidth, chart.place.width);
  chart.place.top = MiddleOf(kWindowHeight, chart.place.height);
  there.Select();
  return std::make_shared<ChartObject>(there);
}

bool ChartObject::HasAxis(excel::XlAxisType type, excel::XlAxisGroup group) {
  const workbook::Chart& chart = place_.Get();
  const ChartAxis& axis = chart.*AxisOf(type);
  return group == excel::xlPrimary && axis.on;
}

void ChartObject::HasAxis(excel::XlAxisType type, excel::XlAxisGroup group, bool on) {
  workbook::Chart& chart = place_.Get();
  ChartAxis& axis = chart.*AxisOf(type);
  if (group == excel::xlPrimary) {
    axis.on = on;
  } else if (on) {
    throw Refused("These charts have no secondary axes.");
  }
}

std::shared_ptr<excel::Axis> ChartObject::Axes(excel::XlAxisType type, excel::XlAxisGroup group) {
  place_.Get();
  if (group != excel::xlPrimary) throw Refused("These charts have no secondary axes.");
  return std::make_shared<AxisObject>(
      [place = place_, axis = AxisOf(type)]() -> ChartAxis& { return place.Get().*axis; });
}

void ChartObject::HasTitle(bool on) {
  workbook::Chart& chart = place_.Get();
  if (!on) {
    chart.title.reset();
  } else if (!chart.title) {
    chart.title.emplace();
  }
}

std::shared_ptr<excel::ChartTitle> ChartObject::ChartTitle() {
  if (!HasTitle()) throw Refused("This chart has no title.");
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
  if (index < 1 || static_cast<std::size_t>(index) > count) throw Refused("The chart has no such series.");
  return std::make_shared<SeriesObject>(SeriesPlace(place_, static_cast<std::size_t>(index) - 1));
}

}  // namespace mirelo::workbook
