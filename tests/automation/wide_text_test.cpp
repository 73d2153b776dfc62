#include "automation/wide_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "automation/utf8.h"

namespace mirelo {
namespace {

TEST(WideTexts, CrossBothWaysWhateverTheirCharacters) {
  // Beyond the plane that nearly all are of, one of a thousand.
  for (char32_t code = 0; code <= 0x10FFFF; code += code < 0x10000 ? 1 : 0x3FF) {
    if (code >= 0xD800 && code < 0xE000) continue;  // halves of pairs are no characters
    std::string text;
    utf8::Append(text, code);
    const std::wstring wide = WideText(text);
    ASSERT_EQ(wide.size(), sizeof(wchar_t) == 2 && code > 0xFFFF ? 2U : 1U) << static_cast<long>(code);
    ASSERT_EQ(NarrowText(wide), text) << static_cast<long>(code);
  }
}

TEST(WideTexts, KeepZerosInside) {
  using namespace std::string_view_literals;
  EXPECT_EQ(WideText("a\0b"sv), L"a\0b"sv);
  EXPECT_EQ(NarrowText(L"a\0b"sv), "a\0b"sv);
  EXPECT_EQ(WideText(""), L"");
  EXPECT_EQ(NarrowText({}), "");
}

TEST(WideTexts, HaveReplacementsForWhatIsNoText) {
  EXPECT_EQ(WideText("a\xFF\xE2\x82z"), L"a\uFFFD\uFFFD\uFFFDz");
  EXPECT_EQ(NarrowText(std::wstring{L'a', wchar_t{0xD800}, L'z'}), "a\xEF\xBF\xBDz");
  EXPECT_EQ(NarrowText(std::wstring{wchar_t{0xDC00}, wchar_t{0xD800}}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace mirelo
