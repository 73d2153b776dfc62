#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace mirelo::workbook {

// The error that is being handled, as a text for another process.
std::string CurrentErrorAsText();

// The error of such a text, of the same kind as it was; nothing for a text that is none.
std::exception_ptr ErrorOfText(std::string_view text);

}  // namespace mirelo::workbook
