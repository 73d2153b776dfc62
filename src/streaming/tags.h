#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mirelo {

// Tag messages are searched as the bytes they came in, one a character of the ANSI code page, and become text
// where a value leaves them. Tags are found without regard to case. Positions count from 1; 0 is "absent".

// The first `tag` from `start` on. Error 5 for a start below 1.
std::int32_t FindTag(std::string_view message, std::string_view tag, std::int32_t start = 1);

// The bytes from `start` up to, and without, `end`. Error 5 when the end lies before the start.
std::string_view Between(std::string_view message, std::int32_t start, std::int32_t end);

// The value between a tag, given in its brackets, and its closing tag: the first in the message, as text.
// Empty when one of the two is missing.
std::string GetTagValue(std::string_view message, std::string_view tag);

}  // namespace mirelo
