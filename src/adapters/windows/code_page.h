#pragma once

#include <string>
#include <string_view>

namespace mirelo::windows {

// Texts of Windows and of Windows-1252, one letter to the byte and back, whatever code page the machine has.
// Letters that have no byte become "?".
std::wstring WideOf(std::string_view ansi);
std::string AnsiOf(std::wstring_view wide);

}  // namespace mirelo::windows
