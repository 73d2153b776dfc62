#include "spreadsheet/charts/series_object.h"

#include <algorithm>
#include <array>

#include "spreadsheet/charts/chart_border.h"
#include "spreadsheet/charts/point_object.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

using namespace host::excel;

namespace {

constexpr std::array<std::int32_t, 6> kMarkers{xlMarkerStyleSquare,   xlMarkerStyleDiamond,
                                               xlMarkerStyleTriangle, xlMarkerStyleCircle,
                                               xlMarkerStyleNone,     xlMarkerStyleAutomatic};

// Forgets points at the end that have nothing for themselves any more.
void TrimPoints(ChartSeries& series) {
  while (!series.points.empty() && series.points.back() == ChartPoint()) series.points.pop_back();
}

void SetOnAllPoints(const SeriesPlace& place, PointColor ChartSeries::*of_series,
                    PointColor ChartPoint::*of_point, std::int32_t index) {
  place.Get();
  const PointColor color = PointColorOf(index);
  place.Change([&](ChartSeries& series) {
    series.*of_series = color;
    for (ChartPoint& point : series.points) point.*of_point = {};
    TrimPoints(series);
  });
}

}  // namespace

ChartSeries& SeriesPlace::In(Chart& chart) const {
  if (index_ >= chart.series.size()) throw Refusals::NoSuchSeries();
  return chart.series[index_];
}

Variant SeriesObject::Values() {
  const ChartSeries& series = place_.Get();
  const std::shared_ptr<CellSource> sheet = series.sheet.lock();
  if (!series.values || sheet == nullptr) return VariantArray();
  const Area& area = *series.values;
  VariantArray values(1, static_cast<std::int32_t>(area.Cells()));
  sheet->ForEachNumber(area, [&](std::int32_t row, std::int32_t column, double number) {
    values(row - area.first_row + column - area.first_column + 1) = number;
  });
  return values;
}

void SeriesObject::Values(const Variant& range) {
  place_.Get();
  const auto given = range.IsObject() ? std::dynamic_pointer_cast<Range>(range.AsObject()) : nullptr;
  if (given == nullptr) throw Errors::TypeMismatch();
  const auto cells = place_.home().CellsOf(*given);
  if (!cells) throw Refused("A series plots cells of its own workbook.");
  if (cells->area.Rows() > 1 && cells->area.Columns() > 1)
    throw Refused("The values of a series are one column or one row.");
  place_.Change([&](ChartSeries& series) {
    series.values = cells->area;
    series.sheet = cells->sheet;
  });
}

std::shared_ptr<Border> SeriesObject::Border() {
  place_.Get();
  return std::make_shared<ChartBorder>(
      ChartLineAccess{[place = place_] { return place.Get().line; },
                      [place = place_](const std::function<void(ChartLine&)>& change) {
                        place.Change([&](ChartSeries& series) {
                          change(series.line);
                          for (ChartPoint& point : series.points) {
                            if (point.line.look != Look::Automatic) change(point.line);
                          }
                          TrimPoints(series);
                        });
                      }});
}

void SeriesObject::MarkerStyle(std::int32_t style) {
  place_.Get();
  if (std::find(kMarkers.begin(), kMarkers.end(), style) == kMarkers.end())
    throw Refused("This is no style of markers.");
  place_.Change([style](ChartSeries& series) { series.marker = style; });
}

void SeriesObject::MarkerSize(std::int32_t points) {
  place_.Get();
  if (points < kLeastMarker || points > kGreatestMarker) throw Refusals::NotAMarkerSize();
  place_.Change([points](ChartSeries& series) { series.marker_size = points; });
}

std::int32_t SeriesObject::MarkerBackgroundColorIndex() { return IndexOf(place_.Get().background); }

void SeriesObject::MarkerBackgroundColorIndex(std::int32_t index) {
  SetOnAllPoints(place_, &ChartSeries::background, &ChartPoint::background, index);
}

std::int32_t SeriesObject::MarkerForegroundColorIndex() { return IndexOf(place_.Get().foreground); }

void SeriesObject::MarkerForegroundColorIndex(std::int32_t index) {
  SetOnAllPoints(place_, &ChartSeries::foreground, &ChartPoint::foreground, index);
}

std::shared_ptr<Point> SeriesObject::Points(std::int32_t index) {
  if (index < 1) throw Refused("Points are counted from 1.");
  return std::make_shared<PointObject>(place_, index - 1);
}

}  // namespace mirelo::spreadsheet
