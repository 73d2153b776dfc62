#pragma once

#include <cstdint>
#include <string_view>

namespace mirelo::host::excel {

// What Sheet::Name allows: so many UTF-16 units, and none of these characters.
inline constexpr std::int32_t kLongestSheetName = 31;
inline constexpr std::string_view kInNoSheetName = ":\\/?*[]";

}  // namespace mirelo::host::excel
