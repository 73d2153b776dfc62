#pragma once

// Windows' headers of windows and controls, without the macros that bear the names of members of ours. For
// sources of this room and of its tests; include it before headers of ours.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef UNICODE
#define UNICODE
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <commctrl.h>

#undef GetObject
#undef MessageBox
#undef Yield
#undef far
#undef near
#undef small
