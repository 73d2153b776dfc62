#include "host/registry_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "automation/ansi.h"
#include "automation/text.h"

namespace mirelo::host {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(RegistryNames, PathsAreSplitAtBackslashes) {
  EXPECT_THAT(SplitPath("Software\\Company\\Program"), ElementsAre("Software", "Company", "Program"));
  EXPECT_THAT(SplitPath("\\A\\\\B\\"), ElementsAre("A", "B"));
  EXPECT_THAT(SplitPath("A/B"), ElementsAre("A/B"));
  EXPECT_THAT(SplitPath(""), IsEmpty());
  EXPECT_THAT(SplitPath("\\\\"), IsEmpty());
}

TEST(RegistryNames, EndAtTheFirstNul) {
  EXPECT_EQ(TerminatedName(std::string("a\0b", 3)), "a");
  EXPECT_EQ(TerminatedName(""), "");
}

// The page's case pairs, taken from the tables of text: of two bytes that differ only in case the folded
// forms are the same, and a byte that has no capital on the page stays itself.
TEST(RegistryNames, FoldEveryByteOfThePageAsItsCharacter) {
  for (int byte = 1; byte < 256; ++byte) {
    SCOPED_TRACE(byte);
    const std::string name(1, static_cast<char>(byte));
    const std::string capital = TextToAnsi(UCase(AnsiToText(name)));
    const bool page_has_capital = capital != "?" && byte != 0xB5;
    EXPECT_EQ(FoldName(name), page_has_capital ? capital : name);
    EXPECT_EQ(FoldName(FoldName(name)), FoldName(name));
  }
}

}  // namespace
}  // namespace mirelo::host
