#pragma once

#include "adapters/windows/views/native.h"

#include "forms/control.h"

namespace mirelo::windows {

// A colour of a form's as Windows has it; one of the desktop's own is what it is just now.
COLORREF NativeColor(forms::Color color);
bool IsDesktopColor(forms::Color color);

// Black or white, whichever can be read on this ground.
COLORREF InkOn(COLORREF ground);

}  // namespace mirelo::windows
