#include "spreadsheet/shape_size.h"

#include <algorithm>
#include <cmath>

#include "spreadsheet/errors.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/pixels.h"

namespace mirelo::spreadsheet {

namespace {

std::int32_t WholePixels(double pixels) {
  const double rounded = std::round(pixels);
  if (!(pixels > 0) || rounded > kGreatestShape) throw Refused("A shape cannot have such a size.");
  return std::max(static_cast<std::int32_t>(rounded), 1);
}

}  // namespace

std::int32_t PixelsOfSize(double points) { return WholePixels(points / kPointsPerPixel); }

std::int32_t ScaledPixels(std::int32_t pixels, double factor,
                          host::excel::MsoTriState relative_to_original_size) {
  if (relative_to_original_size != host::excel::msoFalse)
    throw Refused("Only pictures have an original size.");
  return WholePixels(pixels * factor);
}

}  // namespace mirelo::spreadsheet
