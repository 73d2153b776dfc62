#pragma once

#include <algorithm>
#include <string_view>

namespace mirelo::host {

// Whether the text can stand in a line of a request's head without ending it.
inline bool FitsInHttpLine(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

// Whether it can be a verb, which ends at the first blank.
inline bool IsHttpToken(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte <= ' ' || byte >= 0x7F;
  });
}

}  // namespace mirelo::host
