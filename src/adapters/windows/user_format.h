#pragma once

#include "automation/regional_format.h"

namespace mirelo::windows {

// How dates, times and numbers are written by the user's settings of Windows, or as at that place ("de-DE").
// What Windows does not tell is as in the standard format.
RegionalFormat UserFormat(const wchar_t* place = nullptr);

}  // namespace mirelo::windows
