#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Characters of UTF-8 text, for the text functions of this room. A byte that is no part of well-formed UTF-8
// is a character of its own: it decodes to a value that no well-formed text has, and encodes back to the same
// byte.
namespace mirelo::utf8 {

struct Character {
  char32_t code = 0;
  std::size_t length = 1;  // bytes; never 0
};

// The character that starts at `position`, which lies inside the text.
Character Decode(std::string_view text, std::size_t position);
void Append(std::string& text, char32_t code);

// Bytes that the first `count` characters take; the whole text's when it has fewer.
std::size_t Offset(std::string_view text, std::size_t count);
std::size_t Count(std::string_view text);

// The simple case pairs of all scripts.
char32_t Upper(char32_t code);
char32_t Lower(char32_t code);

// How many bytes at the start of `text` are the same as `what` but for case; `kNoMatch` when the text does
// not start with it.
inline constexpr std::size_t kNoMatch = static_cast<std::size_t>(-1);
std::size_t MatchIgnoringCase(std::string_view text, std::string_view what);

}  // namespace mirelo::utf8
