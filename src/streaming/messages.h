#pragma once

#include <string_view>

namespace mirelo {

// What ends each message to the server: the character of ANSI code 255.
inline constexpr std::string_view kMessageEnd = "\u00FF";

}  // namespace mirelo
