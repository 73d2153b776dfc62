#pragma once

#include "com/system.h"

#include <string>
#include <string_view>

namespace mirelo::com {

// The text of a client, up to its zero. Null is the empty text.
std::string TextOf(const OLECHAR* text);

// A text that whoever gets it frees. Error 7.
BSTR NewText(std::string_view text);

}  // namespace mirelo::com
