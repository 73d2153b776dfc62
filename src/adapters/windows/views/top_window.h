#pragma once

#include "adapters/windows/views/native.h"

#include <vector>

namespace mirelo::windows {

class FormWindow;

// What a box or form is to lie above: the topmost form, else the active window of this thread's program; null
// for none.
HWND TopWindow(const std::vector<FormWindow*>& shown);

}  // namespace mirelo::windows
