#pragma once

#include <string>
#include <string_view>

namespace mirelo {

// Texts of Windows are of wide characters, ours are UTF-8. A wide character that has 16 bits is a part of
// UTF-16, as on Windows, and a code otherwise. What is no valid text gets replacement characters, one for
// each byte, or for each wide character.
std::wstring WideText(std::string_view text);
std::string NarrowText(std::wstring_view text);

}  // namespace mirelo
