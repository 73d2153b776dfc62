#include "spreadsheet/charts/point_object.h"

#include "spreadsheet/charts/chart_border.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

namespace excel = host::excel;

namespace {

// The series, if it has the point.
const ChartSeries& SeriesWith(const SeriesPlace& place, std::int32_t index) {
  const ChartSeries& series = place.Get();
  const std::int64_t count = series.values ? series.values->Cells() : 0;
  if (index < 0 || index >= count) throw Refused("The series has no such point.");
  return series;
}

// What the point has for itself; null when that is nothing.
const ChartPoint* Find(const ChartSeries& series, std::int32_t index) {
  const auto at = static_cast<std::size_t>(index);
  return at < series.points.size() ? &series.points[at] : nullptr;
}

ChartPoint& Make(ChartSeries& series, std::int32_t index) {
  const auto at = static_cast<std::size_t>(index);
  if (at >= series.points.size()) series.points.resize(at + 1);
  return series.points[at];
}

ChartLine LineOf(const ChartSeries& series, std::int32_t index) {
  const ChartPoint* point = Find(series, index);
  return point != nullptr && point->line.look != Look::Automatic ? point->line : series.line;
}

std::int32_t ColorIndexOf(const SeriesPlace& place, std::int32_t index, PointColor ChartPoint::*of_point,
                          PointColor ChartSeries::*of_series) {
  const ChartSeries& series = SeriesWith(place, index);
  const ChartPoint* point = Find(series, index);
  const bool has_own = point != nullptr && (point->*of_point).look != Look::Automatic;
  return IndexOf(has_own ? point->*of_point : series.*of_series);
}

}  // namespace

std::int32_t IndexOf(const PointColor& color) {
  if (color.look == Look::Own) return NearestIndex(color.color);
  return color.look == Look::None ? excel::xlColorIndexNone : excel::xlColorIndexAutomatic;
}

PointColor PointColorOf(std::int32_t index) {
  if (index == excel::xlColorIndexAutomatic) return {};
  if (index == excel::xlColorIndexNone) return {Look::None, kAutomatic};
  if (index < 1 || index > kPaletteSize) throw Refusals::NotAColorIndex();
  return {Look::Own, PaletteColor(index)};
}

PointObject::PointObject(SeriesPlace series, std::int32_t index) : series_(std::move(series)), index_(index) {
  SeriesWith(series_, index_);
}

std::shared_ptr<excel::Border> PointObject::Border() {
  SeriesWith(series_, index_);
  return std::make_shared<ChartBorder>(
      ChartLineAccess{[place = series_, index = index_] { return LineOf(SeriesWith(place, index), index); },
                      [place = series_, index = index_](const std::function<void(ChartLine&)>& change) {
                        ChartLine line = LineOf(SeriesWith(place, index), index);
                        change(line);
                        place.Change([&](ChartSeries& series) { Make(series, index).line = line; });
                      }});
}

std::int32_t PointObject::MarkerBackgroundColorIndex() {
  return ColorIndexOf(series_, index_, &ChartPoint::background, &ChartSeries::background);
}

void PointObject::MarkerBackgroundColorIndex(std::int32_t index) {
  SeriesWith(series_, index_);
  const PointColor color = PointColorOf(index);
  series_.Change([&](ChartSeries& series) { Make(series, index_).background = color; });
}

std::int32_t PointObject::MarkerForegroundColorIndex() {
  return ColorIndexOf(series_, index_, &ChartPoint::foreground, &ChartSeries::foreground);
}

void PointObject::MarkerForegroundColorIndex(std::int32_t index) {
  SeriesWith(series_, index_);
  const PointColor color = PointColorOf(index);
  series_.Change([&](ChartSeries& series) { Make(series, index_).foreground = color; });
}

}  // namespace mirelo::spreadsheet
