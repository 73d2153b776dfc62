#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo {

// Text is UTF-8. Positions and lengths below count characters (code points), from 1 as automation does, and 0
// stands for "not found". A byte that is no part of well-formed UTF-8 counts as a character of its own and is
// kept as it is. Text of ASCII only is handled without decoding.

enum class Compare { Binary, Text };  // Text: without regard to case, for all scripts with simple case pairs

std::string UCase(std::string_view text);
std::string LCase(std::string_view text);

// Blanks (U+0020) only, as automation trims.
std::string_view LTrim(std::string_view text);
std::string_view RTrim(std::string_view text);
std::string_view Trim(std::string_view text);

std::int32_t Len(std::string_view text);

// Error 5 for a negative count, or a start below 1. Counts past the end are cut.
std::string_view Left(std::string_view text, std::int32_t count);
std::string_view Right(std::string_view text, std::int32_t count);
std::string_view Mid(std::string_view text, std::int32_t start);
std::string_view Mid(std::string_view text, std::int32_t start, std::int32_t count);

// Position of `what` in `text` from `start` on; 0 when absent. An empty `what` is found at `start`, an empty
// text holds nothing. Error 5 for a start below 1.
std::int32_t InStr(std::int32_t start, std::string_view text, std::string_view what, Compare compare);
// Position of the last `what`; 0 when absent. An empty `what` is found at the last character.
std::int32_t InStrRev(std::string_view text, std::string_view what, Compare compare);

// Every `what` from the left replaced; an empty `what` changes nothing.
std::string Replace(std::string_view text, std::string_view what, std::string_view with,
                    Compare compare = Compare::Binary);

bool EqualText(std::string_view a, std::string_view b);                         // Compare::Text
std::int32_t StrComp(std::string_view a, std::string_view b, Compare compare);  // -1, 0, 1

// The pieces between delimiters, in order; an empty text has none. An empty delimiter leaves the text in one
// piece.
std::vector<std::string> Split(std::string_view text, std::string_view delimiter);
// The same without copying: the views live as long as `text`. `pieces` is overwritten, its capacity is
// reused.
void Split(std::string_view text, std::string_view delimiter, std::vector<std::string_view>& pieces);
std::string Join(const std::vector<std::string>& pieces, std::string_view delimiter);

// A hash that is equal for texts that EqualText holds equal.
std::size_t HashText(std::string_view text);

}  // namespace mirelo
