#include <gtest/gtest.h>

#include <string>

#include "automation/date.h"
#include "automation/format.h"
#include "automation/number.h"
#include "automation/text.h"

namespace mirelo {
namespace {

// Bytes that are no UTF-8, with the number of characters they count as.
struct Malformed {
  const char* bytes;
  std::int32_t characters;
};
constexpr Malformed kMalformed[] = {
    {"\x80", 1},              // a continuation alone
    {"\xFF\xFE", 2},          // never part of UTF-8
    {"\xC3", 1},              // cut off
    {"\xE2\x82", 2},          // cut off
    {"\xF0\x9F\x98", 3},      // cut off
    {"\xC0\x80", 2},          // overlong
    {"\xE0\x80\x80", 3},      // overlong
    {"\xF0\x80\x80\x80", 4},  // overlong
    {"\xED\xA0\x80", 3},      // a surrogate
    {"\xF4\x90\x80\x80", 4},  // beyond the last character
    {"\xC3(", 2},             // broken off by a plain character
    {"\xE4"
     "bc\u00E4",
     4},
};

TEST(MalformedText, CountsEachStrayByteAsACharacter) {
  for (const Malformed& text : kMalformed) EXPECT_EQ(Len(text.bytes), text.characters) << text.bytes;
}

TEST(MalformedText, KeepsItsBytes) {
  for (const Malformed& text : kMalformed) {
    SCOPED_TRACE(text.bytes);
    std::string rebuilt;
    for (std::int32_t i = 1; i <= text.characters; ++i) rebuilt += Mid(text.bytes, i, 1);
    EXPECT_EQ(rebuilt, text.bytes);
    EXPECT_EQ(std::string(Left(text.bytes, 1)) + std::string(Right(text.bytes, text.characters - 1)),
              text.bytes);
    EXPECT_EQ(LCase(UCase(text.bytes)), text.bytes);
    EXPECT_EQ(Replace(text.bytes, "x", "y", Compare::Text), text.bytes);
  }
}

TEST(MalformedText, EqualsItselfOnly) {
  for (const Malformed& a : kMalformed) {
    for (const Malformed& b : kMalformed) EXPECT_EQ(EqualText(a.bytes, b.bytes), &a == &b);
    EXPECT_EQ(StrComp(a.bytes, a.bytes, Compare::Text), 0);
  }
  EXPECT_FALSE(EqualText("\xE4", "\u00E4")) << "a byte is not the character of its number";
}

TEST(MalformedText, IsFoundWhereItStands) {
  EXPECT_EQ(InStr(1, "a\xFFz", "\xFFZ", Compare::Text), 2);
  EXPECT_EQ(InStr(1, "a\xFFz", "\xFF", Compare::Binary), 2);
  EXPECT_EQ(InStrRev("\x80\x80", "\x80", Compare::Text), 2);
}

TEST(MalformedText, IsNoNumberAndNoDate) {
  for (const Malformed& text : kMalformed) {
    EXPECT_FALSE(IsNumeric(text.bytes));
    EXPECT_EQ(Val(text.bytes), 0);
    EXPECT_FALSE(ParseDate(text.bytes, RegionalFormat::Standard()));
    EXPECT_EQ(Format(Date{}, std::string("\"") + text.bytes, RegionalFormat::Standard()), text.bytes);
  }
}

}  // namespace
}  // namespace mirelo
