#include "terminal/text_columns.h"

#include <gtest/gtest.h>

namespace mirelo::terminal {
namespace {

TEST(TextColumns, AreNotCharacters) {
  struct {
    const char* text;
    std::size_t columns;
  } const cases[] = {{"", 0},     {"MSFT", 4},       {"Größe", 5}, {"Gro\u0308sse", 6},
                     {"株価", 4}, {"\U0001F4C8", 2}, {"€", 1},     {"\xFF\xFE", 2}};
  for (const auto& [text, columns] : cases) EXPECT_EQ(ColumnsOf(text), columns) << text;
}

TEST(TextColumns, AreCutBetweenCharacters) {
  EXPECT_EQ(FirstColumns("Größe", 3), "Grö");
  EXPECT_EQ(FirstColumns("株価", 3), "株") << "the second one would lie across the edge";
  EXPECT_EQ(FirstColumns("o\u0308x", 1), "o\u0308") << "a mark stays with its letter";
  EXPECT_EQ(FirstColumns("ab", 9), "ab");
}

TEST(TextColumns, AreShortenedWithAnEllipsis) {
  EXPECT_EQ(Shortened("Microsoft", 9), "Microsoft");
  EXPECT_EQ(Shortened("Microsoft", 8), "Microso…");
  EXPECT_EQ(Shortened("Microsoft", 1), "…");
}

}  // namespace
}  // namespace mirelo::terminal
