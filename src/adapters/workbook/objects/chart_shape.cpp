#include "adapters/workbook/objects/chart_shape.h"

#include <algorithm>
#include <cmath>

#include "adapters/workbook/display/chart_layout.h"
#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/objects/chart_object.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/pixels.h"
#include "spreadsheet/shape_size.h"

namespace mirelo::workbook {

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

void ChartShape::Delete() {
  place_.Get();
  std::erase(place_.All(), place_.chart);
}

void ChartShape::Left(double points) {
  ChartBox& place = place_.Get().place;
  place.left = Placed(points, place.width, WidthOfColumns(*place_.sheet, 1, kColumns));
}

void ChartShape::Top(double points) {
  ChartBox& place = place_.Get().place;
  place.top = Placed(points, place.height, HeightOfRows(*place_.sheet, 1, kRows));
}

void ChartShape::Height(double points) {
  workbook::Chart& chart = place_.Get();
  Resize(chart, chart.place.width, PixelsOfSize(points) * kPointsPerPixel);
}

void ChartShape::Width(double points) {
  workbook::Chart& chart = place_.Get();
  Resize(chart, PixelsOfSize(points) * kPointsPerPixel, chart.place.height);
}

void ChartShape::ScaleHeight(double factor, host::excel::MsoTriState relative_to_original_size) {
  Height(ScaledPixels(PixelsOf(Height()), factor, relative_to_original_size) * kPointsPerPixel);
}

void ChartShape::ScaleWidth(double factor, host::excel::MsoTriState relative_to_original_size) {
  Width(ScaledPixels(PixelsOf(Width()), factor, relative_to_original_size) * kPointsPerPixel);
}

}  // namespace mirelo::workbook
