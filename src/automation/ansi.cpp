#include "automation/ansi.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "automation/utf8.h"

namespace mirelo {

namespace {

// Windows-1252: all 256 bytes as Unicode characters. Only row 8 and 9 differ from Latin-1.
constexpr std::array<char16_t, 256> kPage = [] {
  constexpr std::array<char16_t, 32> rows_8_and_9{
      0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
  std::array<char16_t, 256> page{};
  for (std::size_t byte = 0; byte < page.size(); ++byte) page[byte] = static_cast<char16_t>(byte);
  for (std::size_t i = 0; i < rows_8_and_9.size(); ++i) page[0x80 + i] = rows_8_and_9[i];
  return page;
}();

char ByteOf(char32_t code) {
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(code);
  const auto first = kPage.begin() + 0x80;
  const auto last = kPage.begin() + 0xA0;
  const auto found = std::find(first, last, code);
  return found == last ? '?' : static_cast<char>(found - kPage.begin());
}

// Bytes below 128 at the start.
std::size_t AsciiPrefix(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::size_t position = 0;
  for (; text.size() - position >= sizeof(std::uint64_t); position += sizeof(std::uint64_t)) {
    std::uint64_t eight;
    std::memcpy(&eight, text.data() + position, sizeof eight);
    if ((eight & kHighBits) != 0) break;
  }
  while (position < text.size() && static_cast<unsigned char>(text[position]) < 0x80) ++position;
  return position;
}

}  // namespace

bool IsAscii(std::string_view text) { return AsciiPrefix(text) == text.size(); }

std::string AnsiToText(std::string_view bytes) {
  std::string text;
  AppendAnsi(text, bytes);
  return text;
}

std::string AnsiToText(std::span<const std::uint8_t> bytes) {
  return AnsiToText(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

void AppendAnsi(std::string& text, std::string_view bytes) {
  for (;;) {
    const std::size_t plain = AsciiPrefix(bytes);
    text.append(bytes.substr(0, plain));
    bytes.remove_prefix(plain);
    if (bytes.empty()) return;
    utf8::Append(text, kPage[static_cast<unsigned char>(bytes.front())]);
    bytes.remove_prefix(1);
  }
}

std::string TextToAnsi(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const std::size_t plain = AsciiPrefix(text);
    bytes.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) break;
    const utf8::Character character = utf8::Decode(text, 0);
    bytes += ByteOf(character.code);
    text.remove_prefix(character.length);
  }
  return bytes;
}

}  // namespace mirelo
