#pragma once

#include <QColor>

#include "forms/control.h"

class QPalette;

namespace mirelo::qt {

// The desktop's own colours are those of the palette.
QColor ColorOf(forms::Color color, const QPalette& palette);

// Black or white, whichever can be read on the colour.
QColor InkOn(const QColor& ground);

}  // namespace mirelo::qt
