// Letters and addresses as we take them, held against what Windows makes of them.

#include "com/system.h"

#include <gtest/gtest.h>
#include <wininet.h>

#include <optional>
#include <random>
#include <string>

#include "automation/text.h"
#include "automation/wide_text.h"
#include "host/canonical_url.h"

namespace mirelo::testing {
namespace {

std::string Mapped(wchar_t letter, DWORD how) {
  wchar_t mapped[4] = L"";
  const int length = ::LCMapStringEx(LOCALE_NAME_INVARIANT, how, &letter, 1, mapped, 4, nullptr, nullptr, 0);
  return NarrowText({mapped, static_cast<std::size_t>(length)});
}

// Windows leaves a letter alone whose other case has another letter for its own, as the micro sign: its
// documentation calls these the rules of names of files.
TEST(WindowsLetters, HaveTheCasesThatOursHave) {
  int left_alone = 0;
  for (int code = 1; code <= 0xFFFF; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;  // halves of letters
    const auto wide = static_cast<wchar_t>(code);
    const std::string letter = NarrowText({&wide, 1});
    SCOPED_TRACE(code);
    const std::string upper = Mapped(wide, LCMAP_UPPERCASE);
    const std::string lower = Mapped(wide, LCMAP_LOWERCASE);
    if (upper == UCase(letter) && lower == LCase(letter)) continue;
    ++left_alone;
    EXPECT_FALSE(LCase(UCase(letter)) == letter && UCase(LCase(letter)) == letter);
    EXPECT_TRUE(upper == UCase(letter) || (upper == letter && LCase(UCase(letter)) != letter)) << upper;
    EXPECT_TRUE(lower == LCase(letter) || (lower == letter && UCase(LCase(letter)) != letter)) << lower;
  }
  EXPECT_LT(left_alone, 60);
}

std::optional<std::string> WindowsCanonical(const std::string& url) {
  std::string text(4096, '\0');
  DWORD length = 4096;
  if (!::InternetCanonicalizeUrlA(url.c_str(), text.data(), &length, ICU_BROWSER_MODE)) return std::nullopt;
  return std::string(text.c_str());
}

// The addresses of which Windows' documentation tells. Wine resolves dots behind the "?", too, which browser
// mode leaves as it is, and lets stand those that lead above the beginning, a point at the end, and ends of
// lines; what it makes of these is not looked at.
TEST(WindowsAddresses, AreMadeCanonicalAsOursAre) {
  for (const char* const url : {"/req?GetLastQuote(MSFT,IBM)",
                                "/req?a b c",
                                "/req?100%",
                                "/req?a#b",
                                "/req?\xE9\xFF",
                                "/req#a b",
                                "/a b",
                                "/a\\b",
                                "/a b?c d",
                                "/a/./b",
                                "/a/../b",
                                "/a/b/../../c",
                                "/a/..",
                                "/a/...",
                                "/a//b",
                                "a",
                                "/r\teq?a\tb",
                                "/req  ",
                                "/req?a ",
                                "/req?a \t",
                                ""}) {
    EXPECT_EQ(WindowsCanonical(url), host::CanonicalUrl(url)) << '"' << url << '"';
  }
}

}  // namespace
}  // namespace mirelo::testing
