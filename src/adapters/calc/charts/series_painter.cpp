#include "adapters/calc/charts/series_painter.h"

#include <algorithm>
#include <com/sun/star/chart2/Symbol.hpp>
#include <com/sun/star/chart2/XChartDocument.hpp>
#include <com/sun/star/chart2/XChartTypeContainer.hpp>
#include <com/sun/star/chart2/XCoordinateSystemContainer.hpp>
#include <com/sun/star/chart2/XDataSeriesContainer.hpp>
#include <com/sun/star/chart2/XDiagram.hpp>
#include <com/sun/star/chart2/data/LabeledDataSequence.hpp>
#include <com/sun/star/chart2/data/XDataSink.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <memory>

#include "adapters/calc/charts/chart_lines.h"
#include "adapters/calc/charts/plotted_cells.h"
#include "host/excel/constants.h"
#include "spreadsheet/color_index.h"

namespace mirelo::calc {

using namespace host::excel;
using spreadsheet::ChartPoint;
using spreadsheet::ChartSeries;
using spreadsheet::kAutomatic;
using spreadsheet::kWhite;
using spreadsheet::Look;
using spreadsheet::PointColor;

namespace {

namespace chart2 = css::chart2;

constexpr std::int32_t kOfficeMarkers = 8;  // that it gives its series in turn

bool PlotsTheSame(const ChartSeries& a, const ChartSeries& b) {
  return a.values == b.values && a.sheet.lock() == b.sheet.lock();
}

bool LooksTheSame(const ChartSeries& a, const ChartSeries& b) {
  return a.line == b.line && a.marker == b.marker && a.marker_size == b.marker_size &&
         a.background == b.background && a.foreground == b.foreground && a.smooth == b.smooth;
}

Reference<chart2::XDataSeriesContainer> ContainerIn(const OfficeChart& chart) {
  const auto systems =
      As<chart2::XCoordinateSystemContainer>(As<chart2::XChartDocument>(chart.document)->getFirstDiagram())
          ->getCoordinateSystems();
  return As<chart2::XDataSeriesContainer>(As<chart2::XChartTypeContainer>(systems[0])->getChartTypes()[0]);
}

const PointColor& OwnOr(const PointColor& own, const PointColor& otherwise) {
  return own.look == Look::Automatic ? otherwise : own;
}

// The number of a marker in the office, for an XlMarkerStyle.
sal_Int32 MarkerOf(std::int32_t style, std::size_t series) {
  switch (style) {
    case xlMarkerStyleSquare:
      return 0;
    case xlMarkerStyleDiamond:
      return 1;
    case xlMarkerStyleTriangle:
      return 3;
    case xlMarkerStyleCircle:
      return 8;
    default:
      return static_cast<sal_Int32>(series) % kOfficeMarkers;
  }
}

// A marker. `line` is the colour that it has where nobody gave it one.
chart2::Symbol Marker(std::size_t number, const ChartSeries& series, const PointColor& background,
                      const PointColor& foreground, sal_Int32 line) {
  chart2::Symbol marker;
  marker.Style = series.marker == xlMarkerStyleNone ? chart2::SymbolStyle_NONE : chart2::SymbolStyle_STANDARD;
  marker.StandardSymbol = MarkerOf(series.marker, number);
  marker.Size.Width = marker.Size.Height = LengthOf(series.marker_size);
  // The office fills every marker; one without a fill looks empty on white.
  marker.FillColor = background.look == Look::Own    ? sal_Int32{background.color}
                     : background.look == Look::None ? kWhite
                                                     : line;
  marker.BorderColor = foreground.look == Look::Own    ? sal_Int32{foreground.color}
                       : foreground.look == Look::None ? marker.FillColor
                                                       : line;
  return marker;
}

void PaintColumn(const Properties& column, const PointColor& background, sal_Int32 automatic) {
  if (background.look == Look::None) return column.Set("FillStyle", css::drawing::FillStyle_NONE);
  column.Set("FillStyle", css::drawing::FillStyle_SOLID);
  column.Set("Color", background.look == Look::Own ? sal_Int32{background.color} : automatic);
}

}  // namespace

SeriesPainter::SeriesPainter(const Reference<css::uno::XComponentContext>& context, const OfficeChart& chart)
    : context_(context), chart_(chart), has_markers_(chart.Kind().has_markers), series_(chart.Series()) {}

void SeriesPainter::PaintSources(const spreadsheet::Chart& now, spreadsheet::Chart& painted) {
  while (series_.size() > now.series.size()) RemoveLast();
  while (series_.size() < now.series.size()) Add();
  painted.series.resize(now.series.size());
  for (std::size_t i = 0; i < now.series.size(); ++i) {
    if (PlotsTheSame(now.series[i], painted.series[i])) continue;
    if (now.series[i].values) Plot(series_[i], now.series[i]);
    painted.series[i].values = now.series[i].values;
    painted.series[i].sheet = now.series[i].sheet;
  }
}

void SeriesPainter::Add() {
  const auto made = As<chart2::XDataSeries>(
      context_->getServiceManager()->createInstanceWithContext("com.sun.star.chart2.DataSeries", context_));
  const std::size_t number = series_.size();
  const Properties looks(made);
  looks.Set("Color", sal_Int32{SchemeColor(number)});
  if (has_markers_) {
    chart2::Symbol marker;
    marker.Style = chart2::SymbolStyle_AUTO;
    marker.Size.Width = marker.Size.Height = LengthOf(ChartSeries().marker_size);
    looks.Set("Symbol", marker);
  }
  ContainerIn(chart_)->addDataSeries(made);
  series_.push_back(made);
}

void SeriesPainter::RemoveLast() {
  ContainerIn(chart_)->removeDataSeries(series_.back());
  series_.pop_back();
}

void SeriesPainter::Plot(const SeriesReference& series, const ChartSeries& source) const {
  const auto cells = std::dynamic_pointer_cast<const SheetCells>(source.sheet.lock());
  if (cells == nullptr) return;
  const auto provider = As<chart2::XChartDocument>(chart_.document)->getDataProvider();
  const auto values = provider->createDataSequenceByRangeRepresentation(
      OfficeText(RepresentationOf(cells->sheet().Name(), *source.values)));
  Properties(values).Set("Role", rtl::OUString("values-y"));
  const auto labeled =
      As<chart2::data::XLabeledDataSequence>(chart2::data::LabeledDataSequence::create(context_));
  labeled->setValues(values);
  As<chart2::data::XDataSink>(series)->setData(
      css::uno::Sequence<Reference<chart2::data::XLabeledDataSequence>>(&labeled, 1));
}

void SeriesPainter::PaintLooks(const spreadsheet::Chart& now, spreadsheet::Chart& painted) const {
  for (std::size_t i = 0; i < std::min(series_.size(), now.series.size()); ++i) {
    const ChartSeries& series = now.series[i];
    ChartSeries& shown = painted.series[i];
    const bool all = !LooksTheSame(series, shown);
    if (all) PaintLook(i, series, shown);
    PaintPoints(i, series, shown, all);
    const auto values = shown.values;
    const auto sheet = shown.sheet;
    shown = series;
    shown.values = values;
    shown.sheet = sheet;
  }
}

void SeriesPainter::PaintLook(std::size_t number, const ChartSeries& now, const ChartSeries& painted) const {
  const Properties series(series_[number]);
  const sal_Int32 scheme = SchemeColor(number);
  if (now.line != painted.line) {
    const LineNames& names = has_markers_ ? kSeriesLine : kColumnLine;
    if (now.line.look != Look::Automatic) {
      PaintLine(chart_.document, series, names, now.line, has_markers_ ? scheme : 0);
    } else if (has_markers_) {
      PaintAsTheOfficeDoes(series, {"LineStyle", "LineWidth"});
      series.Set("Color", scheme);
    } else {
      PaintAsTheOfficeDoes(series, {"BorderStyle", "BorderWidth", "BorderColor"});
    }
  }
  if (!has_markers_) return PaintColumn(series, now.background, scheme);

  const sal_Int32 line =
      now.line.look == Look::Own && now.line.color != kAutomatic ? sal_Int32{now.line.color} : scheme;
  chart2::Symbol marker = Marker(number, now, now.background, now.foreground, line);
  const bool is_automatic = now.marker == xlMarkerStyleAutomatic && now.background == PointColor() &&
                            now.foreground == PointColor();
  if (is_automatic) marker.Style = chart2::SymbolStyle_AUTO;
  series.Set("Symbol", marker);
  // Of all lines of the chart, which has one of them.
  if (now.smooth != painted.smooth) chart_.Diagram().Set("SplineType", sal_Int32{now.smooth ? 1 : 0});
}

void SeriesPainter::PaintPoints(std::size_t number, const ChartSeries& now, const ChartSeries& painted,
                                bool all) const {
  static const ChartPoint nothing;
  const auto at = [](const ChartSeries& series, std::size_t i) -> const ChartPoint& {
    return i < series.points.size() ? series.points[i] : nothing;
  };
  for (std::size_t i = 0; i < std::max(now.points.size(), painted.points.size()); ++i) {
    const ChartPoint& point = at(now, i);
    if (point == at(painted, i) && (!all || point == nothing)) continue;
    const auto index = static_cast<sal_Int32>(i);
    if (point == nothing) {
      series_[number]->resetDataPoint(index);
    } else {
      PaintPoint(number, Properties(series_[number]->getDataPointByIndex(index)), now, point);
    }
  }
}

void SeriesPainter::PaintPoint(std::size_t number, const Properties& point, const ChartSeries& series,
                               const ChartPoint& looks) const {
  const PointColor& background = OwnOr(looks.background, series.background);
  const spreadsheet::ChartLine& line = looks.line.look == Look::Automatic ? series.line : looks.line;
  const sal_Int32 scheme = SchemeColor(number);
  if (has_markers_) {
    const sal_Int32 color =
        line.look == Look::Own && line.color != kAutomatic ? sal_Int32{line.color} : scheme;
    point.Set("Symbol",
              Marker(number, series, background, OwnOr(looks.foreground, series.foreground), color));
    return;
  }
  PaintColumn(point, background, scheme);
  if (looks.line.look != Look::Automatic) PaintLine(chart_.document, point, kColumnLine, looks.line, 0);
}

spreadsheet::Color SeriesPainter::SchemeColor(std::size_t number) const {
  const auto scheme = As<chart2::XChartDocument>(chart_.document)->getFirstDiagram()->getDefaultColorScheme();
  return scheme->getColorByIndex(static_cast<sal_Int32>(number));
}

}  // namespace mirelo::calc
