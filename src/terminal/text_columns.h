#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mirelo::terminal {

// Text (UTF-8) as a terminal lays it out: most characters are one column wide, ideographs and pictures two,
// and marks that combine with the character before them none.

std::size_t ColumnsOf(std::string_view text);

// The longest beginning of the text that is at most so wide, marks that combine with its last character
// included.
std::string_view FirstColumns(std::string_view text, std::size_t columns);

// The text itself when it is at most so wide, else its beginning with an ellipsis; exactly so wide where the
// characters allow it. `columns` is at least 1.
std::string Shortened(std::string_view text, std::size_t columns);

}  // namespace mirelo::terminal
