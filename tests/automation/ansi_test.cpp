#include "automation/ansi.h"

#include <gtest/gtest.h>

#include <array>
#include <numeric>
#include <string>
#include <string_view>

namespace mirelo {
namespace {

std::string AllBytes() {
  std::string bytes(256, '\0');
  std::iota(bytes.begin(), bytes.end(), '\0');
  return bytes;
}

TEST(Ansi, KeepsAll256BytesThroughTextAndBack) { EXPECT_EQ(TextToAnsi(AnsiToText(AllBytes())), AllBytes()); }

TEST(Ansi, KeepsEachByteOnItsOwn) {
  for (const char byte : AllBytes()) {
    const std::string bytes(1, byte);
    EXPECT_EQ(TextToAnsi(AnsiToText(bytes)), bytes)
        << "byte " << static_cast<int>(static_cast<unsigned char>(byte));
  }
}

struct Pair {
  const char* bytes;
  const char* text;
};
constexpr Pair kPairs[] = {
    {"", ""},
    {"MSFT,25.10", "MSFT,25.10"},
    {"\x80", "\u20AC"},                      // euro
    {"\x83\x8A\x8C", "\u0192\u0160\u0152"},  // florin, S caron, OE
    {"\x91\x92\x93\x94", "\u2018\u2019\u201C\u201D"},
    {"\x9F", "\u0178"},
    {"\x81\x8D\x8F\x90\x9D", "\u0081\u008D\u008F\u0090\u009D"},  // undefined in the page
    {"\xA0\xFF", "\u00A0\u00FF"},
    {"12345678\xE4"
     "12345678",
     "12345678\u00E4"
     "12345678"},
    {"\xDCml\xE4ute", "\u00DCml\u00E4ute"},
};

TEST(Ansi, IsWindows1252) {
  for (const Pair& pair : kPairs) {
    SCOPED_TRACE(pair.text);
    EXPECT_EQ(AnsiToText(std::string_view(pair.bytes)), pair.text);
    EXPECT_EQ(TextToAnsi(pair.text), pair.bytes);
  }
}

TEST(Ansi, WritesAQuestionMarkForACharacterThatThePageDoesNotHave) {
  EXPECT_EQ(TextToAnsi("a\u0416b\u4E00c\U0001F600d"), "a?b?c?d");
  EXPECT_EQ(TextToAnsi("\u0080"), "?") << "the page has the euro sign at this byte";
}

TEST(Ansi, WritesAQuestionMarkForEachStrayByteOfMalformedText) {
  EXPECT_EQ(TextToAnsi("a\xFF\xC3"), "a??");
  EXPECT_EQ(TextToAnsi("\xE2\x82"), "??");
}

TEST(Ansi, TakesBytesFromASpan) {
  const std::array<std::uint8_t, 3> bytes{'a', 0x80, 0};
  EXPECT_EQ(AnsiToText(std::span(bytes)), std::string("a\u20AC\0", 5));
}

TEST(Ansi, AppendsToWhatIsThere) {
  std::string text = "price ";
  AppendAnsi(text,
             "\x80"
             "5");
  EXPECT_EQ(text, "price \u20AC5");
}

TEST(Ansi, TellsWhetherNothingNeedsTranslating) {
  EXPECT_TRUE(IsAscii(""));
  EXPECT_TRUE(IsAscii(std::string("\0\x7F plain text", 13)));
  for (std::size_t length = 1; length < 20; ++length) {
    std::string text(length, 'x');
    text.back() = '\x80';
    EXPECT_FALSE(IsAscii(text)) << "last of " << length;
    std::swap(text.front(), text.back());
    EXPECT_FALSE(IsAscii(text)) << "first of " << length;
  }
}

}  // namespace
}  // namespace mirelo
