#pragma once

#include <string>
#include <string_view>

namespace mirelo::workbook {

// Characters that XML cannot carry are written as "_x000D_", their number in four hexadecimal digits; text
// that looks so by itself has its first "_" written in this form.

// Text as it is meant, clean as CleanText makes it.
std::string UnescapeText(std::string_view text);

// Text with what looks like an escape escaped. The characters that need one are left to the file writer.
std::string EscapeLookalikes(std::string_view text);

// The same, with the characters escaped that XML cannot carry.
std::string EscapeControls(std::string_view text);

}  // namespace mirelo::workbook
