#pragma once

#include <string_view>

#include "automation/text.h"

namespace mirelo {

// Whether two texts name the same quote source: case and the blanks around a name do not count, those in
// front of it being there to make it sort first.
inline bool IsSameSource(std::string_view a, std::string_view b) { return EqualText(Trim(a), Trim(b)); }

}  // namespace mirelo
