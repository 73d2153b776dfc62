#include <gtest/gtest.h>

#include <string>

#include "automation/text.h"

namespace mirelo {
namespace {

struct CasePair {
  const char* lower;
  const char* upper;
};
constexpr CasePair kCasePairs[] = {
    {"", ""},
    {"msft", "MSFT"},
    {"a123456", "A123456"},
    {"0123456789 [\\]^_`{|}~@", "0123456789 [\\]^_`{|}~@"},
    {"abcdefghijklmnopqrstuvwxyz", "ABCDEFGHIJKLMNOPQRSTUVWXYZ"},
    {"\u00E4\u00F6\u00FC", "\u00C4\u00D6\u00DC"},
    {"\u0434\u043E\u0432\u0430\u043D\u0442\u0430", "\u0414\u041E\u0412\u0410\u041D\u0422\u0410"},  // Cyrillic
    {"\u03B1\u03C9", "\u0391\u03A9"},                                                              // Greek
    {"\u0561", "\u0531"},                                                                          // Armenian
    {"\U00010428", "\U00010400"},                                                                  // Deseret
    {"ticker \u00E4 and more", "TICKER \u00C4 AND MORE"},
    {"\u65E5\u672C", "\u65E5\u672C"},  // no case
};

TEST(Case, ChangesBothWaysForAllScripts) {
  for (const CasePair& pair : kCasePairs) {
    SCOPED_TRACE(pair.lower);
    EXPECT_EQ(UCase(pair.lower), pair.upper);
    EXPECT_EQ(LCase(pair.upper), pair.lower);
  }
}

TEST(Case, LeavesLettersWithoutASinglePartnerAlone) { EXPECT_EQ(UCase("stra\u00DFe"), "STRA\u00DFE"); }

TEST(EqualText, DisregardsCaseAndHashesAlike) {
  for (const CasePair& pair : kCasePairs) {
    SCOPED_TRACE(pair.lower);
    EXPECT_TRUE(EqualText(pair.lower, pair.upper));
    EXPECT_EQ(HashText(pair.lower), HashText(pair.upper));
    EXPECT_EQ(StrComp(pair.lower, pair.upper, Compare::Text), 0);
  }
}

// Each length and place once, since several characters are compared at a time.
TEST(EqualText, SeesADifferenceAtEveryPlace) {
  for (std::size_t length = 1; length <= 20; ++length) {
    const std::string text(length, 'x');
    EXPECT_FALSE(EqualText(text, text.substr(1)));
    EXPECT_FALSE(EqualText(text, text + '\0'));
    for (std::size_t place = 0; place < length; ++place) {
      std::string other = text;
      other[place] = 'X';
      EXPECT_TRUE(EqualText(text, other)) << length << " " << place;
      EXPECT_EQ(HashText(text), HashText(other)) << length << " " << place;
      other[place] = 'y';
      EXPECT_FALSE(EqualText(text, other)) << length << " " << place;
      EXPECT_NE(HashText(text), HashText(other)) << length << " " << place;
      other.replace(place, 1, "\u00E4");
      EXPECT_FALSE(EqualText(text, other)) << length << " " << place;
    }
  }
}

TEST(EqualText, TellsNeighboursOfTheLettersApart) {
  EXPECT_FALSE(EqualText("@", "`"));
  EXPECT_FALSE(EqualText("[", "{"));
  EXPECT_FALSE(EqualText("^", "~"));
  EXPECT_FALSE(EqualText("0", "P"));
}

TEST(EqualText, FindsPairsOfDifferentLength) {
  EXPECT_TRUE(EqualText("\u212A1", "k1")) << "the Kelvin sign's lower case is an ordinary k";
  EXPECT_EQ(HashText("\u212A1"), HashText("K1"));
}

TEST(HashText, DiffersForNeighbouringKeys) {
  EXPECT_NE(HashText("a1"), HashText("a2"));
  EXPECT_NE(HashText("a"), HashText(std::string("a\0", 2)));
  EXPECT_NE(HashText("12345678a"), HashText("a12345678"));
}

TEST(StrComp, OrdersByCharacters) {
  EXPECT_EQ(StrComp("a", "b", Compare::Binary), -1);
  EXPECT_EQ(StrComp("b", "a", Compare::Binary), 1);
  EXPECT_EQ(StrComp("a", "a", Compare::Binary), 0);
  EXPECT_EQ(StrComp("B", "a", Compare::Binary), -1);
  EXPECT_EQ(StrComp("B", "a", Compare::Text), 1);
  EXPECT_EQ(StrComp("ab", "A", Compare::Text), 1);
  EXPECT_EQ(StrComp("", "a", Compare::Text), -1);
  EXPECT_EQ(StrComp("z", "\u00E4", Compare::Text), -1);
}

}  // namespace
}  // namespace mirelo
