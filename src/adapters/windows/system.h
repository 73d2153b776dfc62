#pragma once

// Windows' header without the macros that bear names of ours. For sources of this room; include it before
// headers of ours.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#undef GetObject
#undef MessageBox
#undef Yield
#undef far
#undef near
#undef small
