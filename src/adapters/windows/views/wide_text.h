#pragma once

#include <string>
#include <string_view>

namespace mirelo::windows {

// Texts of Windows are UTF-16, ours are UTF-8. What is no valid text gets replacement characters.
std::wstring WideText(std::string_view text);
std::string NarrowText(std::wstring_view text);

}  // namespace mirelo::windows
