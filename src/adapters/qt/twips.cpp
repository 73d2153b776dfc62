#include "adapters/qt/twips.h"

#include <QWidget>
#include <algorithm>
#include <cmath>

#include "host/window_placement.h"

namespace mirelo::qt {

namespace {

constexpr double kDesignedLetter = 6;  // pixels, on average

double PixelsToTheTwip(const QWidget& widget) {
  const double letters = widget.fontMetrics().averageCharWidth() / kDesignedLetter;
  return std::max(1.0, letters) / host::kTwipsPerPixel;
}

}  // namespace

int PixelsOf(std::int32_t twips, const QWidget& widget) {
  return static_cast<int>(std::lround(twips * PixelsToTheTwip(widget)));
}

std::int32_t TwipsOf(int pixels, const QWidget& widget) {
  return static_cast<std::int32_t>(std::lround(pixels / PixelsToTheTwip(widget)));
}

}  // namespace mirelo::qt
