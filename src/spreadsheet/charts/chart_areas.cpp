#include "spreadsheet/charts/chart_areas.h"

#include <algorithm>

#include "spreadsheet/charts/chart_border.h"
#include "spreadsheet/charts/chart_fill.h"
#include "spreadsheet/charts/chart_layout.h"
#include "spreadsheet/errors.h"

namespace mirelo::spreadsheet {

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
  return std::make_shared<ChartFillObject>(
      ChartPart<ChartFill>(place_, [](Chart& chart) -> ChartFill& { return chart.area; }));
}

ChartBox PlotAreaObject::Box() const { return PlotBox(place_.Get()); }

void PlotAreaObject::Box(const ChartBox& box) {
  place_.Change([&](Chart& chart) { chart.plot_place = box; });
}

void PlotAreaObject::Left(double points) {
  ChartBox box = Box();
  box.left = std::clamp(CheckedPoints(points), 0.0, place_.Get().place.width - box.width);
  Box(box);
}

void PlotAreaObject::Top(double points) {
  ChartBox box = Box();
  box.top = std::clamp(CheckedPoints(points), 0.0, place_.Get().place.height - box.height);
  Box(box);
}

void PlotAreaObject::Width(double points) {
  ChartBox box = Box();
  box.width = CutSize(points, box.left, place_.Get().place.width);
  Box(box);
}

void PlotAreaObject::Height(double points) {
  ChartBox box = Box();
  box.height = CutSize(points, box.top, place_.Get().place.height);
  Box(box);
}

std::shared_ptr<excel::Border> PlotAreaObject::Border() {
  place_.Get();
  return std::make_shared<ChartBorder>(
      AccessTo(ChartPart<ChartLine>(place_, [](Chart& chart) -> ChartLine& { return chart.plot_border; })));
}

std::shared_ptr<excel::ChartFillFormat> PlotAreaObject::Fill() {
  place_.Get();
  return std::make_shared<ChartFillObject>(
      ChartPart<ChartFill>(place_, [](Chart& chart) -> ChartFill& { return chart.plot; }));
}

}  // namespace mirelo::spreadsheet
