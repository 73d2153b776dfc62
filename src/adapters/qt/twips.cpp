#include "adapters/qt/twips.h"

#include <QWidget>
#include <cmath>

#include "forms/layout/measures.h"
#include "host/window_placement.h"

namespace mirelo::qt {

namespace {

double PixelsToTheTwip(const QWidget& widget) {
  return forms::layout::GrowthFor(widget.fontMetrics().averageCharWidth()) / host::kTwipsPerPixel;
}

}  // namespace

int PixelsOf(std::int32_t twips, const QWidget& widget) {
  return static_cast<int>(std::lround(twips * PixelsToTheTwip(widget)));
}

std::int32_t TwipsOf(int pixels, const QWidget& widget) {
  return static_cast<std::int32_t>(std::lround(pixels / PixelsToTheTwip(widget)));
}

}  // namespace mirelo::qt
