#include "automation/wide_text.h"

#include <cstddef>

#include "automation/utf8.h"

namespace mirelo {

namespace {

constexpr bool kIsUtf16 = sizeof(wchar_t) == 2;
constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstHigh = 0xD800;  // of the halves of a pair
constexpr char32_t kFirstLow = 0xDC00;
constexpr char32_t kBehindLow = 0xE000;
constexpr char32_t kFirstOfPairs = 0x10000;
constexpr char32_t kLast = 0x10FFFF;

bool IsHalf(char32_t code) { return code >= kFirstHigh && code < kBehindLow; }
bool IsPair(std::wstring_view text) {
  if (!kIsUtf16 || text.size() < 2) return false;
  const auto high = static_cast<char32_t>(text[0]);
  const auto low = static_cast<char32_t>(text[1]);
  return high >= kFirstHigh && high < kFirstLow && low >= kFirstLow && low < kBehindLow;
}

void Append(std::wstring& wide, char32_t code) {
  if (!kIsUtf16 || code < kFirstOfPairs) {
    wide += static_cast<wchar_t>(code);
    return;
  }
  const char32_t rest = code - kFirstOfPairs;
  wide += static_cast<wchar_t>(kFirstHigh + (rest >> 10));
  wide += static_cast<wchar_t>(kFirstLow + (rest & 0x3FF));
}

}  // namespace

std::wstring WideText(std::string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const utf8::Character character = utf8::Decode(text, i);
    Append(wide, IsHalf(character.code) ? kReplacement : character.code);  // a stray byte is such a code
    i += character.length;
  }
  return wide;
}

std::string NarrowText(std::wstring_view text) {
  std::string narrow;
  narrow.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto code = static_cast<char32_t>(text[i]);
    if (IsPair(text.substr(i, 2))) {
      const auto low = static_cast<char32_t>(text[++i]);
      code = kFirstOfPairs + ((code - kFirstHigh) << 10) + (low - kFirstLow);
    }
    utf8::Append(narrow, IsHalf(code) || code > kLast ? kReplacement : code);
  }
  return narrow;
}

}  // namespace mirelo
