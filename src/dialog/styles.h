#pragma once

#include <array>

namespace mirelo {

// The colours that the dialog offers for the quote table and for charts, in the order of the lists.
inline constexpr const char* kNoStyle = "None";
inline constexpr std::array<const char*, 4> kStyles{"Blue", "Green", "Yellow", kNoStyle};

}  // namespace mirelo
