#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace mirelo {

// The ANSI code page of the system's byte edges: Windows-1252. One byte is one character both ways; the five
// bytes that the page leaves undefined (81, 8D, 8F, 90, 9D) are the control characters of the same number.

// Text of bytes. Every byte string has one.
std::string AnsiToText(std::string_view bytes);
std::string AnsiToText(std::span<const std::uint8_t> bytes);
// Appends to `text` instead of making a new string.
void AppendAnsi(std::string& text, std::string_view bytes);

// Bytes of text. A character that the page does not have becomes "?".
std::string TextToAnsi(std::string_view text);

// True when no byte needs translating (all below 128), so that both forms are the same bytes.
bool IsAscii(std::string_view text);

}  // namespace mirelo
