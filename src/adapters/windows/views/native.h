#pragma once

// Windows' headers of windows and controls. For sources of this room and of its tests; include it before
// headers of ours.
#ifndef UNICODE
#define UNICODE
#endif
#include "adapters/windows/system.h"

#include <commctrl.h>
