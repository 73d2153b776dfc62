#include "adapters/workbook/objects/chart_areas.h"

#include <algorithm>

#include "adapters/workbook/display/chart_layout.h"
#include "adapters/workbook/objects/chart_border.h"
#include "adapters/workbook/objects/chart_fill.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace excel = host::excel;

namespace {

// A size that begins at `from` and reaches at most to `end`. Error 1004 for what is no size.
double CutSize(double points, double from, double end) {
  if (!(CheckedPoints(points) > 0)) throw Refused("A plot area cannot be so small.");
  return std::clamp(points, std::min(kLeastPlot, end - from), end - from);
}

}  // namespace

std::shared_ptr<excel::ChartFillFormat> ChartAreaObject::Fill() {
  place_.Get();
  return std::make_shared<ChartFillObject>([place = place_]() -> ChartFill& { return place.Get().area; });
}

ChartBox PlotAreaObject::Box() const { return PlotBox(place_.Get()); }

void PlotAreaObject::Left(double points) {
  ChartBox box = Box();
  box.left = std::clamp(CheckedPoints(points), 0.0, place_.chart->place.width - box.width);
  place_.chart->plot_place = box;
}

void PlotAreaObject::Top(double points) {
  ChartBox box = Box();
  box.top = std::clamp(CheckedPoints(points), 0.0, place_.chart->place.height - box.height);
  place_.chart->plot_place = box;
}

void PlotAreaObject::Width(double points) {
  ChartBox box = Box();
  box.width = CutSize(points, box.left, place_.chart->place.width);
  place_.chart->plot_place = box;
}

void PlotAreaObject::Height(double points) {
  ChartBox box = Box();
  box.height = CutSize(points, box.top, place_.chart->place.height);
  place_.chart->plot_place = box;
}

std::shared_ptr<excel::Border> PlotAreaObject::Border() {
  place_.Get();
  return std::make_shared<ChartBorder>(
      AccessTo([place = place_]() -> ChartLine& { return place.Get().plot_border; }));
}

std::shared_ptr<excel::ChartFillFormat> PlotAreaObject::Fill() {
  place_.Get();
  return std::make_shared<ChartFillObject>([place = place_]() -> ChartFill& { return place.Get().plot; });
}

}  // namespace mirelo::workbook
