#pragma once

#include <string_view>

namespace mirelo {

// What the system calls itself towards people.
inline constexpr std::string_view kProductTitle = "Mirelo";

// Major, minor and revision, parted by points: the version that the build's topmost CMakeLists.txt states.
std::string_view ProductVersion();

}  // namespace mirelo
