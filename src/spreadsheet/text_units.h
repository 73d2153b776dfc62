#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mirelo::spreadsheet {

// The length of a UTF-8 text in UTF-16 units, as the spreadsheet counts characters.
std::size_t Utf16Length(std::string_view text);

// Error 1004 for a text that is too long for a comment.
void CheckCommentText(std::string_view text);

// The text as a file can carry it: cut at a NUL, and what is not UTF-8 or no character (FFFE, FFFF) replaced
// by U+FFFD.
std::string CleanText(std::string_view text);

}  // namespace mirelo::spreadsheet
