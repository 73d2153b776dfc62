#include "automation/visible_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "automation/utf8.h"
#include "support/error_number.h"

namespace mirelo {
namespace {

using namespace std::string_view_literals;

TEST(VisibleText, HoldsNothingThatIsObeyed) {
  struct {
    std::string_view text;
    std::string_view visible;
  } const cases[] = {
      {"", ""},
      {"MSFT 27.5\\n", "MSFT 27.5\\n"},
      {"a\033[31mb", "a\\u001B[31mb"},
      {"\a\b\x7F", "\\u0007\\u0008\\u007F"},
      {"one\r\ntwo\tthree", "one\\r\\ntwo\\tthree"},
      {"a\0b"sv, "a\\0b"},
      {"\u0085\u009B31m", "\\u0085\\u009B31m"},
      {"\u202Etxt\u202C \u2066x\u2069 \u200F\u061C", "\\u202Etxt\\u202C \\u2066x\\u2069 \\u200F\\u061C"},
      {"a\u2028b\u2029", "a\\u2028b\\u2029"},
      {"MS\u200BFT \uFEFF\u2060", "MS\\u200BFT \\uFEFF\\u2060"},
      {"Größe 株 \U0001F4C8 \u00A0 \U0001F468\u200D\U0001F4BB",
       "Größe 株 \U0001F4C8 \u00A0 \U0001F468\u200D\U0001F4BB"},
      {"a\u00ADb\u034F\u115F\u1160\u17B4\u180B\u180F\u3164\uFFA0",
       "a\\u00ADb\\u034F\\u115F\\u1160\\u17B4\\u180B\\u180F\\u3164\\uFFA0"},
      {"a\U000E0041\U000E007F", "a\\U000E0041\\U000E007F"},
      {"\u2764\uFE0F", "\u2764\uFE0F"},
      {"a\xC3", "a\\xC3"},
      {"\x9B\xED\xA0\x80", "\\x9B\\xED\\xA0\\x80"},
  };
  for (const auto& [text, visible] : cases) {
    EXPECT_EQ(Visible(text), visible);
    EXPECT_EQ(Visible(Visible(text)), visible) << "nothing is left to be done";
  }
}

TEST(VisibleText, KeepsLinesAndTabsWhereTheyAreLayout) {
  EXPECT_EQ(VisibleLines("a\r\n\tb\nc\rd\r"), "a\n\tb\nc\\rd\\r");
  EXPECT_EQ(VisibleLines("\n\n"), "\n\n");
  EXPECT_EQ(VisibleLines("\u2028\033"), "\\u2028\\u001B");
}

TEST(VisibleText, IsReadBackExactlyWhereItWasEscaped) {
  for (const std::string_view text :
       {""sv, "plain"sv, "\\"sv, "\\n\n\\\\u001B\033"sv, "a\0b\t\r\n"sv, "\u0085\u202E\uFEFF\u200B"sv,
        "\U000E0041\U0001D173\\U000E0041"sv, "\xFF\xC3\\x\xC3"sv, "株\\"sv}) {
    EXPECT_EQ(Unescaped(Escaped(text)), text) << Escaped(text);
    EXPECT_EQ(Visible(Escaped(text)), Escaped(text)) << "no control is left";
  }
}

TEST(VisibleText, IsReadBackForEveryCharacterOfThePlaneAndEveryByte) {
  std::string all;
  for (char32_t character = 0; character < 0x10000; ++character) {
    if (character < 0xD800 || character >= 0xE000) utf8::Append(all, character);
  }
  EXPECT_EQ(Unescaped(Escaped(all)), all);
  for (int byte = 0x80; byte < 0x100; ++byte) {
    const std::string text{'a', static_cast<char>(byte), 'b'};
    EXPECT_EQ(Unescaped(Escaped(text)), text);
  }
}

TEST(VisibleText, IsRefusedWhereABackslashBeginsNothing) {
  for (const char* text : {"\\", "a\\", "\\a", "\\u", "\\u12", "\\uXYZW", "\\u 1B", "\\uD800", "\\x", "\\x41",
                           "\\x9", "\\xg0", "\\N", "\\U0001F4C", "\\U00110000", "\\U0000001B"}) {
    EXPECT_EQ(testing::NumberOf([&] { Unescaped(text); }), 5) << text;
  }
}

TEST(VisibleJson, EscapesWhatJsonLeaves) {
  EXPECT_EQ(VisibleJson("{\"a\":\"\u007F\u009B\u202E \\u001b é\"}"),
            "{\"a\":\"\\u007F\\u009B\\u202E \\u001b é\"}");
  EXPECT_EQ(VisibleJson("\"\U000E0041\""), "\"\\uDB40\\uDC41\"");
}

}  // namespace
}  // namespace mirelo
