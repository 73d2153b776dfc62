#pragma once

#include <string_view>

namespace mirelo {

// Characters that the beginning of a vertical sheet's name must not hold.
inline constexpr std::string_view kNotInSheetNames = "=@#&$%^'!:\\/?*[]";

}  // namespace mirelo
