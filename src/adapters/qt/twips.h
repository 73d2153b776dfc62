#pragma once

#include <cstdint>

class QWidget;

namespace mirelo::qt {

// Forms are designed in twips, 15 to the pixel of a screen of 96 pixels to the inch, for letters of that
// time. On a widget's screen and with its font, a length in twips keeps its proportion to the letters.
int PixelsOf(std::int32_t twips, const QWidget& widget);
std::int32_t TwipsOf(int pixels, const QWidget& widget);

}  // namespace mirelo::qt
