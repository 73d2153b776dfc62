#include "automation/visible_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <system_error>
#include <utility>

#include "automation/hex.h"
#include "automation/runtime_error.h"
#include "automation/utf8.h"

namespace mirelo {

namespace {

struct Characters {
  char32_t first;
  char32_t last;
};

constexpr Characters kObeyed[] = {
    {0x0000, 0x001F},  // controls
    {0x007F, 0x009F},  // delete, and the other controls
    {0x2028, 0x2029},  // ends of lines and paragraphs
    {0xFFF9, 0xFFFB},  // marks of annotations
    {0xDC80, 0xDCFF},  // bytes that are no UTF-8, as utf8::Decode gives them
    // Unicode's property Default_Ignorable_Code_Point: what has no shape of its own, marks of direction among
    // it. But for the joiners (200C and 200D) and the selectors of variants (FE00 to FE0F, E0100 to E01EF),
    // which words and pictures are written with.
    {0x00AD, 0x00AD},
    {0x034F, 0x034F},
    {0x061C, 0x061C},
    {0x115F, 0x1160},
    {0x17B4, 0x17B5},
    {0x180B, 0x180F},
    {0x200B, 0x200B},
    {0x200E, 0x200F},
    {0x202A, 0x202E},
    {0x2060, 0x206F},
    {0x3164, 0x3164},
    {0xFEFF, 0xFEFF},
    {0xFFA0, 0xFFA0},
    {0xFFF0, 0xFFF8},
    {0x1BCA0, 0x1BCA3},
    {0x1D173, 0x1D17A},
    {0xE0000, 0xE00FF},
    {0xE01F0, 0xE0FFF},
};
constexpr char32_t kStrayByte = 0xDC00;

// Those that have a letter.
constexpr std::array<std::pair<char32_t, char>, 4> kLetters{
    {{'\t', 't'}, {'\n', 'n'}, {'\r', 'r'}, {'\0', '0'}}};

constexpr std::size_t kCharacterDigits = 4;
constexpr std::size_t kLongCharacterDigits = 8;
constexpr char32_t kFirstLong = 0x10000;  // that four digits cannot name
constexpr std::size_t kByteDigits = 2;

bool IsObeyed(char32_t character) {
  return std::any_of(std::begin(kObeyed), std::end(kObeyed), [=](const Characters& range) {
    return range.first <= character && character <= range.last;
  });
}

bool IsShownAsItIs(char byte) { return byte >= 0x20 && byte < 0x7F; }

std::string Digits(char32_t number, std::size_t count) {
  std::string digits(count, '0');
  for (; count > 0; number >>= 4) digits[--count] = HexDigit(number);
  return digits;
}

std::string Written(char32_t character) {
  if (character >= kStrayByte && character < kStrayByte + 0x100) {
    return "\\x" + Digits(character - kStrayByte, kByteDigits);
  }
  const auto letter =
      std::find_if(kLetters.begin(), kLetters.end(), [=](const auto& l) { return l.first == character; });
  if (letter != kLetters.end()) return {'\\', letter->second};
  return character < kFirstLong ? "\\u" + Digits(character, kCharacterDigits)
                                : "\\U" + Digits(character, kLongCharacterDigits);
}

// The text with `write` in place of each character that is obeyed.
template <class Write>
std::string Replaced(std::string_view text, const Write& write) {
  std::string replaced;
  replaced.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const auto plain = static_cast<std::size_t>(
        std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(position), text.end(), IsShownAsItIs) -
        text.begin());
    replaced += text.substr(position, plain - position);
    position = plain;
    if (position == text.size()) break;
    const utf8::Character next = utf8::Decode(text, position);
    if (IsObeyed(next.code)) {
      replaced += write(next.code);
    } else {
      replaced += text.substr(position, next.length);
    }
    position += next.length;
  }
  return replaced;
}

[[noreturn]] void Refuse() {
  throw RuntimeError(
      Errors::InvalidProcedureCall().Number(),
      "a backslash must be followed by one of \\ t n r 0, by u and four digits, U and eight, or x and two");
}

// Takes so many hexadecimal digits off the text.
char32_t TakeDigits(std::string_view& text, std::size_t count) {
  std::uint32_t number = 0;
  if (text.size() < count) Refuse();
  const auto [end, error] = std::from_chars(text.data(), text.data() + count, number, 16);
  if (error != std::errc() || end != text.data() + count) Refuse();
  text.remove_prefix(count);
  return number;
}

// Takes what stands behind a backslash off the text.
void TakeEscape(std::string_view& escaped, std::string& text) {
  const char letter = escaped.empty() ? ' ' : escaped.front();
  escaped.remove_prefix(escaped.empty() ? 0 : 1);
  if (letter == '\\') {
    text += letter;
  } else if (letter == 'u') {
    const char32_t character = TakeDigits(escaped, kCharacterDigits);
    if (character >= 0xD800 && character < 0xE000) Refuse();  // half a pair is no character
    utf8::Append(text, character);
  } else if (letter == 'U') {
    const char32_t character = TakeDigits(escaped, kLongCharacterDigits);
    if (character < kFirstLong || character > 0x10FFFF) Refuse();
    utf8::Append(text, character);
  } else if (letter == 'x') {
    const char32_t byte = TakeDigits(escaped, kByteDigits);
    if (byte < 0x80) Refuse();
    text += static_cast<char>(byte);
  } else {
    const auto known =
        std::find_if(kLetters.begin(), kLetters.end(), [=](const auto& l) { return l.second == letter; });
    if (known == kLetters.end()) Refuse();
    text += static_cast<char>(known->first);
  }
}

}  // namespace

std::string Visible(std::string_view text) { return Replaced(text, Written); }

std::string VisibleLines(std::string_view text) {
  std::string lines;
  for (;;) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    lines += Replaced(line, [](char32_t c) { return c == '\t' ? std::string("\t") : Written(c); });
    if (end == std::string_view::npos) return lines;
    lines += '\n';
    text.remove_prefix(end + 1);
  }
}

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (;;) {
    const std::size_t backslash = text.find('\\');
    escaped += Visible(text.substr(0, backslash));
    if (backslash == std::string_view::npos) return escaped;
    escaped += "\\\\";
    text.remove_prefix(backslash + 1);
  }
}

std::string Unescaped(std::string_view escaped) {
  std::string text;
  for (;;) {
    const std::size_t backslash = escaped.find('\\');
    text += escaped.substr(0, backslash);
    if (backslash == std::string_view::npos) return text;
    escaped.remove_prefix(backslash + 1);
    TakeEscape(escaped, text);
  }
}

std::string VisibleJson(std::string_view json) {
  return Replaced(json, [](char32_t c) {
    if (c < kFirstLong) return "\\u" + Digits(c, kCharacterDigits);
    const char32_t rest = c - kFirstLong;  // a pair of halves
    return "\\u" + Digits(0xD800 + (rest >> 10), kCharacterDigits) + "\\u" +
           Digits(0xDC00 + (rest & 0x3FF), kCharacterDigits);
  });
}

}  // namespace mirelo
