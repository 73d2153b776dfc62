#include "spreadsheet/charts/chart_shape.h"

#include <algorithm>
#include <cmath>

#include "spreadsheet/charts/chart_layout.h"
#include "spreadsheet/charts/chart_object.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/pixels.h"
#include "spreadsheet/shape_size.h"

namespace mirelo::spreadsheet {

namespace {

// Where a shape of this size stands that a client puts at `points`: on a whole pixel, and not beyond the end
// of the sheet.
double Placed(double points, double size, double end) {
  if (!(CheckedPoints(points) >= 0)) throw Refused("A shape cannot lie off the sheet.");
  const double last = std::floor(std::max(end - size, 0.0) / kPointsPerPixel);
  return std::min(std::round(points / kPointsPerPixel), last) * kPointsPerPixel;
}

std::int32_t PixelsOf(double points) {
  return static_cast<std::int32_t>(std::round(points / kPointsPerPixel));
}

}  // namespace

host::excel::MsoShapeType ChartShape::Type() {
  place_.Get();
  return host::excel::msoChart;
}

std::shared_ptr<host::excel::Chart> ChartShape::Chart() {
  place_.Get();
  return std::make_shared<ChartObject>(place_);
}

void ChartShape::Left(double points) {
  const double left = Placed(points, place_.Get().place.width, place_.home().WholeSheet().width);
  place_.Change([left](spreadsheet::Chart& chart) { chart.place.left = left; });
}

void ChartShape::Top(double points) {
  const double top = Placed(points, place_.Get().place.height, place_.home().WholeSheet().height);
  place_.Change([top](spreadsheet::Chart& chart) { chart.place.top = top; });
}

void ChartShape::Height(double points) {
  place_.Get();
  const double height = PixelsOfSize(points) * kPointsPerPixel;
  place_.Change([height](spreadsheet::Chart& chart) { Resize(chart, chart.place.width, height); });
}

void ChartShape::Width(double points) {
  place_.Get();
  const double width = PixelsOfSize(points) * kPointsPerPixel;
  place_.Change([width](spreadsheet::Chart& chart) { Resize(chart, width, chart.place.height); });
}

void ChartShape::ScaleHeight(double factor, host::excel::MsoTriState relative_to_original_size) {
  Height(ScaledPixels(PixelsOf(Height()), factor, relative_to_original_size) * kPointsPerPixel);
}

void ChartShape::ScaleWidth(double factor, host::excel::MsoTriState relative_to_original_size) {
  Width(ScaledPixels(PixelsOf(Width()), factor, relative_to_original_size) * kPointsPerPixel);
}

}  // namespace mirelo::spreadsheet
