#include "host/canonical_url.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "http/tested_internet.h"
#include "support/tested_loop.h"

namespace mirelo::host {
namespace {

TEST(CanonicalUrl, FollowsTheRulesOfBrowserMode) {
  const struct {
    std::string url, canonical;
  } cases[] = {
      // The query stays as it is.
      {"/req?GetLastQuote(MSFT,IBM)", "/req?GetLastQuote(MSFT,IBM)"},
      {"/req?a b c", "/req?a b c"},
      {"/req?100%", "/req?100%"},
      {"/req?a#b", "/req?a#b"},
      {"/req?\xE9\xFF", "/req?\xE9\xFF"},
      {"/req?a\\b/../c", "/req?a\\b/../c"},
      {"/req#a b", "/req#a b"},
      // The path does not.
      {"/a b", "/a%20b"},
      {"/a\\b", "/a%5Cb"},
      {"/a b?c d", "/a%20b?c d"},
      {"/a/./b", "/a/b"},
      {"/a/../b", "/b"},
      {"/a/b/../../c", "/c"},
      {"/../a", "/a"},
      {"/..", "/"},
      {"/a/..", "/"},
      {"/a/.", "/a/"},
      {"/a/...", "/a/..."},
      {"/a//b", "/a//b"},
      {"/a/../b?c/../d", "/b?c/../d"},
      {"a/../b", "/b"},
      {"a", "a"},
      // Wherever they stand.
      {"/r\teq?a\tb", "/req?ab"},
      {"/req?a\r\nb", "/req?ab"},
      {"/req  ", "/req"},
      {"/req?a ", "/req?a"},
      {"/req?a \t", "/req?a"},
      {"", ""},
      {"   ", ""},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.url);
    EXPECT_EQ(CanonicalUrl(each.url), each.canonical);
  }
}

TEST(CanonicalUrl, MustFitTheBufferWithItsTerminator) {
  testing::TestedLoop loop;
  testing::TestedInternet internet(loop);
  const auto canonical = [&](std::size_t length) {
    return internet.InternetCanonicalizeUrlA("/" + std::string(length - 1, 'x'), 4096,
                                             WinInetApi::kBrowserMode);
  };
  EXPECT_EQ(canonical(4095).value().size(), 4095u);
  EXPECT_EQ(canonical(4096), std::nullopt);
  EXPECT_EQ(internet.InternetCanonicalizeUrlA("/a b", 6, WinInetApi::kBrowserMode), std::nullopt);
  EXPECT_EQ(internet.InternetCanonicalizeUrlA("/a b", 7, WinInetApi::kBrowserMode), "/a%20b");
}

TEST(RequestTarget, CannotBreakTheRequestLine) {
  const struct {
    std::string resource, target;
  } cases[] = {
      {"/req?a b", "/req?a%20b"},
      {"req", "/req"},
      {"", "/"},
      {"?a", "/?a"},
      {"/a\r\nb", "/a%0D%0Ab"},
      {"/a\x7F", "/a%7F"},
      {"/\xE9", "/\xE9"},
      {std::string("/a\0b", 4), "/a%00b"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.resource);
    EXPECT_EQ(RequestTarget(each.resource), each.target);
  }
}

}  // namespace
}  // namespace mirelo::host
