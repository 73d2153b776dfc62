#include "automation/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/error_number.h"

namespace mirelo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::NumberOf;

// Five characters in fourteen bytes: one, two, three, four and four bytes.
constexpr const char* kMixed = "a\u00E4\u20AC\U0001F600\U00010400";

TEST(Trim, TakesBlanksOnly) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(LTrim("  a b  "), "a b  ");
  EXPECT_EQ(RTrim("  a b  "), "  a b");
  EXPECT_EQ(Trim("\t a \r\n"), "\t a \r\n");
  EXPECT_EQ(Trim(" \ta\t "), "\ta\t");
  EXPECT_EQ(LTrim(" \ta"), "\ta");
  EXPECT_EQ(RTrim("a\t "), "a\t");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(LTrim(""), "");
  EXPECT_EQ(Trim("\u00A0a\u00A0"), "\u00A0a\u00A0");
}

TEST(Len, CountsCharacters) {
  EXPECT_EQ(Len(""), 0);
  EXPECT_EQ(Len("MSFT"), 4);
  EXPECT_EQ(Len(kMixed), 5);
}

TEST(LeftAndRight, CountCharactersAndCutPastTheEnd) {
  EXPECT_EQ(Left("MSFT", 2), "MS");
  EXPECT_EQ(Left("MSFT", 9), "MSFT");
  EXPECT_EQ(Left("MSFT", 0), "");
  EXPECT_EQ(Left(kMixed, 3), "a\u00E4\u20AC");
  EXPECT_EQ(Right("MSFT", 2), "FT");
  EXPECT_EQ(Right("MSFT", 4), "MSFT");
  EXPECT_EQ(Right("MSFT", 0), "");
  EXPECT_EQ(Right(kMixed, 2), "\U0001F600\U00010400");
}

TEST(Mid, CountsCharactersFrom1) {
  EXPECT_EQ(Mid("MSFT", 2), "SFT");
  EXPECT_EQ(Mid("MSFT", 2, 2), "SF");
  EXPECT_EQ(Mid("MSFT", 4, 9), "T");
  EXPECT_EQ(Mid("MSFT", 5), "");
  EXPECT_EQ(Mid("MSFT", 50, 1), "");
  EXPECT_EQ(Mid("MSFT", 1, 0), "");
  EXPECT_EQ(Mid(kMixed, 2, 3), "\u00E4\u20AC\U0001F600");
}

TEST(Pieces, RefuseANegativeCountAndAStartBelow1) {
  EXPECT_EQ(NumberOf([] { Left("abc", -1); }), 5);
  EXPECT_EQ(NumberOf([] { Right("abc", -1); }), 5);
  EXPECT_EQ(NumberOf([] { Mid("abc", 0); }), 5);
  EXPECT_EQ(NumberOf([] { Mid("abc", 0, 1); }), 5);
  EXPECT_EQ(NumberOf([] { Mid("abc", 1, -1); }), 5);
  EXPECT_EQ(NumberOf([] { InStr(0, "abc", "a", Compare::Binary); }), 5);
}

struct Search {
  std::int32_t start;
  const char* text;
  const char* what;
  Compare compare;
  std::int32_t position;
};
constexpr Search kSearches[] = {
    {1, "QuoteTracker", "Track", Compare::Binary, 6},
    {1, "QuoteTracker", "track", Compare::Binary, 0},
    {1, "QuoteTracker", "track", Compare::Text, 6},
    {6, "QuoteTracker", "Track", Compare::Binary, 6},
    {7, "QuoteTracker", "Track", Compare::Binary, 0},
    {1, "a,b,c", ",", Compare::Binary, 2},
    {3, "a,b,c", ",", Compare::Text, 4},
    {2, "abc", "", Compare::Binary, 2},
    {3, "abc", "", Compare::Text, 3},
    {4, "abc", "", Compare::Binary, 0},
    {9, "abc", "c", Compare::Binary, 0},
    {1, "", "a", Compare::Binary, 0},
    {1, "", "", Compare::Binary, 0},
    {1, "abc", "abcd", Compare::Text, 0},
    {1, kMixed, "\U0001F600", Compare::Binary, 4},
    {2, kMixed, "\u20AC", Compare::Binary, 3},
    {1, "x\u00C4\u0416y", "\u00E4\u0436", Compare::Text, 2},
    {1, "x\u00C4\u0416y", "\u00E4\u0436", Compare::Binary, 0},
    {1, "\u00E4\u00E4b", "B", Compare::Text, 3},
};

TEST(InStr, GivesThePositionInCharactersOr0) {
  for (const Search& search : kSearches) {
    SCOPED_TRACE(std::string(search.what) + " in " + search.text + " from " + std::to_string(search.start));
    EXPECT_EQ(InStr(search.start, search.text, search.what, search.compare), search.position);
  }
}

TEST(InStrRev, GivesThePositionOfTheLast) {
  EXPECT_EQ(InStrRev("a,b,c", ",", Compare::Binary), 4);
  EXPECT_EQ(InStrRev("aXbxc", "X", Compare::Binary), 2);
  EXPECT_EQ(InStrRev("aXbxc", "X", Compare::Text), 4);
  EXPECT_EQ(InStrRev("aaa", "aa", Compare::Text), 2);
  EXPECT_EQ(InStrRev("\u00E4,\u00E4,", ",", Compare::Binary), 4);
  EXPECT_EQ(InStrRev("abc", "x", Compare::Text), 0);
  EXPECT_EQ(InStrRev("abc", "", Compare::Binary), 3);
  EXPECT_EQ(InStrRev("", "a", Compare::Binary), 0);
}

TEST(Replace, ReplacesEachFromTheLeft) {
  EXPECT_EQ(Replace("a,b,c", ",", "|"), "a|b|c");
  EXPECT_EQ(Replace("aaa", "aa", "b"), "ba");
  EXPECT_EQ(Replace("a,b", ",", ""), "ab");
  EXPECT_EQ(Replace("a,b", ",", ",,"), "a,,b");
  EXPECT_EQ(Replace("abc", "x", "y"), "abc");
  EXPECT_EQ(Replace("abc", "", "y"), "abc");
  EXPECT_EQ(Replace("", "x", "y"), "");
}

TEST(Replace, RegardsCaseOnlyInABinaryComparison) {
  EXPECT_EQ(Replace("aBAb", "ab", "-"), "aBAb");
  EXPECT_EQ(Replace("aBAb", "ab", "-", Compare::Text), "--");
  EXPECT_EQ(Replace("\u00C4x\u00E4", "\u00E4", "-", Compare::Text), "-x-");
}

TEST(Split, GivesThePiecesBetweenDelimiters) {
  EXPECT_THAT(Split("MSFT,IBM", ","), ElementsAre("MSFT", "IBM"));
  EXPECT_THAT(Split("MSFT", ","), ElementsAre("MSFT"));
  EXPECT_THAT(Split(",a,,", ","), ElementsAre("", "a", "", ""));
  EXPECT_THAT(Split(",", ","), ElementsAre("", ""));
  EXPECT_THAT(Split("a\r\nb\r\n", "\r\n"), ElementsAre("a", "b", ""));
  EXPECT_THAT(Split("", ","), IsEmpty());
  EXPECT_THAT(Split("a,b", ""), ElementsAre("a,b"));
}

// Bytes are looked at 64 at a time.
TEST(Split, FindsADelimiterAtEveryPlaceOfALongText) {
  for (std::size_t size = 1; size <= 140; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      SCOPED_TRACE(std::to_string(size) + " bytes, delimiter at " + std::to_string(place));
      std::string text(size, '-');  // differs from the delimiter in the lowest bit alone
      text[place] = ',';
      ASSERT_THAT(Split(text, ","), ElementsAre(text.substr(0, place), text.substr(place + 1)));
    }
  }
  EXPECT_EQ(Split(std::string(140, ','), ","), std::vector<std::string>(141));
}

// Every text of a and b with delimiters of which one can begin inside of another, behind a stretch that moves
// it to each place of a block.
TEST(Split, TakesDelimitersFromTheLeft) {
  constexpr std::size_t kStretches[] = {0, 1, 55, 58, 60, 63, 64, 120};
  for (const std::string delimiter : {"a", "aa", "ab", "aba"}) {
    for (unsigned bits = 0; bits < 256; ++bits) {
      for (const std::size_t before : kStretches) {
        std::string text(before, '.');
        for (unsigned bit = 0; bit < 8; ++bit) text += (bits >> bit & 1) != 0 ? 'a' : 'b';
        SCOPED_TRACE(text + " at " + delimiter);

        std::vector<std::string> pieces(1);
        for (std::size_t at = 0; at < text.size();) {
          if (text.compare(at, delimiter.size(), delimiter) == 0) {
            pieces.emplace_back();
            at += delimiter.size();
          } else {
            pieces.back() += text[at++];
          }
        }
        ASSERT_EQ(Split(text, delimiter), pieces);
      }
    }
  }
}

TEST(Split, OverwritesTheGivenPieces) {
  std::vector<std::string_view> pieces{"old", "older", "oldest"};
  Split("a b", " ", pieces);
  EXPECT_THAT(pieces, ElementsAre("a", "b"));
  Split("", " ", pieces);
  EXPECT_THAT(pieces, IsEmpty());
}

TEST(Join, PutsDelimitersBetweenOnly) {
  EXPECT_EQ(Join({"MSFT", "IBM", ""}, ","), "MSFT,IBM,");
  EXPECT_EQ(Join({"MSFT"}, ","), "MSFT");
  EXPECT_EQ(Join({}, ","), "");
}

}  // namespace
}  // namespace mirelo
