#pragma once

#include <QColor>

#include "forms/control.h"

class QPalette;

namespace mirelo::qt {

// The Qt colour of a form's colour. The desktop's own colours are looked up in the palette.
QColor ColorOf(forms::Color color, const QPalette& palette);

// Black or white, whichever can be read on the colour.
QColor InkOn(const QColor& ground);

}  // namespace mirelo::qt
