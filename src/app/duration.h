#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace mirelo::app {

// A duration as people write it: "20s", "1.5h", "1h30m", "250ms"; a number alone is seconds. Nothing for
// other texts, and for no time at all.
std::optional<std::chrono::milliseconds> ParseDuration(std::string_view text);

}  // namespace mirelo::app
