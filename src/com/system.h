#pragma once

// Windows' headers of automation, without the macros that bear the names of members of ours. For sources of
// this room and of those who use it; include it before headers of ours.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <oleauto.h>

#include <ocidl.h>
#include <olectl.h>

#undef GetObject
#undef MessageBox
#undef Yield
#undef far
#undef near
#undef small
