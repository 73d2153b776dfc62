#pragma once

#include <cstdint>
#include <optional>

#include "forms/control.h"

namespace mirelo::calc {

// A form's colour as the office has it: red in the high byte. Nothing for the desktop's own colours, which
// the office chooses.
std::optional<std::int32_t> OfficeColor(forms::Color color);

// Black or white, whichever can be read on an office's colour.
std::int32_t InkOn(std::int32_t ground);

}  // namespace mirelo::calc
