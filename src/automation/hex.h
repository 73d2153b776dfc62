#pragma once

#include <cstdint>
#include <string>

namespace mirelo {

// The digit of the lowest four bits, a capital from 10 up.
constexpr char HexDigit(std::uint32_t number) { return "0123456789ABCDEF"[number & 0xF]; }

// Appends the two digits of a byte.
inline void AppendHex(std::string& text, std::uint8_t byte) {
  text += HexDigit(byte >> 4U);
  text += HexDigit(byte);
}

}  // namespace mirelo
