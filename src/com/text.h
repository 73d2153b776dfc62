#pragma once

#include "com/system.h"

#include <string>
#include <string_view>

namespace mirelo::com {

// Texts of clients are UTF-16, ours are UTF-8. What is no valid text gets replacement characters.
std::wstring WideText(std::string_view text);
std::string TextOf(std::wstring_view text);
// Null is the empty text.
std::string TextOf(const OLECHAR* text);

// A text that whoever gets it frees. Error 7.
BSTR NewText(std::string_view text);

}  // namespace mirelo::com
