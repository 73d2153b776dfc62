#include "app/terminal_text.h"

#include <gtest/gtest.h>

namespace mirelo::app {
namespace {

TEST(TerminalText, CountsColumnsNotCharacters) {
  struct {
    const char* text;
    std::size_t columns;
  } const cases[] = {{"", 0},     {"MSFT", 4},       {"Größe", 5}, {"Gro\u0308sse", 6},
                     {"株価", 4}, {"\U0001F4C8", 2}, {"€", 1},     {"\xFF\xFE", 2}};
  for (const auto& [text, columns] : cases) EXPECT_EQ(ColumnsOf(text), columns) << text;
}

TEST(TerminalText, IsCutBetweenCharacters) {
  EXPECT_EQ(FirstColumns("Größe", 3), "Grö");
  EXPECT_EQ(FirstColumns("株価", 3), "株") << "the second one would lie across the edge";
  EXPECT_EQ(FirstColumns("o\u0308x", 1), "o\u0308") << "a mark stays with its letter";
  EXPECT_EQ(FirstColumns("ab", 9), "ab");
}

TEST(TerminalText, IsShortenedWithAnEllipsis) {
  EXPECT_EQ(Shortened("Microsoft", 9), "Microsoft");
  EXPECT_EQ(Shortened("Microsoft", 8), "Microso…");
  EXPECT_EQ(Shortened("Microsoft", 1), "…");
}

TEST(TerminalText, HoldsNothingThatATerminalWouldObey) {
  EXPECT_EQ(Printable("a\033[31mb\nc\td\x7F"), "a [31mb c d ");
  EXPECT_EQ(Printable("a\u009B31m"), "a 31m") << "the other set of controls";
  EXPECT_EQ(Printable("a\u202Eb\u2066c"), "a b c") << "marks of direction";
  EXPECT_EQ(Printable(std::string_view("a\0b", 3)), "a b");
  EXPECT_EQ(Printable("a\xC3"), "a\uFFFD");
  EXPECT_EQ(Printable("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD") << "half a pair";
  EXPECT_EQ(Printable("Größe 株 \U0001F4C8"), "Größe 株 \U0001F4C8");
}

}  // namespace
}  // namespace mirelo::app
