#include "adapters/windows/code_page.h"

#include <gtest/gtest.h>

#include <string>

#include "automation/ansi.h"
#include "automation/wide_text.h"

namespace mirelo::windows {
namespace {

TEST(CodePage, HasTheBytesOfTextsElsewhereAndOthersForNone) {
  for (int code = 1; code <= 0xFFFF; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;  // halves of letters
    const std::wstring wide(1, static_cast<wchar_t>(code));
    ASSERT_EQ(AnsiOf(wide), TextToAnsi(NarrowText(wide))) << std::hex << code;
  }
  EXPECT_EQ(AnsiOf(L"\u0100\u221E"), "??") << "and not an A and an 8, which look like them";
}

TEST(CodePage, HasALetterForEachByte) {
  for (int byte = 1; byte < 256; ++byte) {
    const std::string ansi(1, static_cast<char>(byte));
    EXPECT_EQ(NarrowText(WideOf(ansi)), AnsiToText(ansi)) << byte;
    EXPECT_EQ(AnsiOf(WideOf(ansi)), ansi) << byte;
  }
  EXPECT_EQ(WideOf(std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
  EXPECT_EQ(WideOf(""), L"");
  EXPECT_EQ(AnsiOf(L""), "");
}

}  // namespace
}  // namespace mirelo::windows
