#include <gtest/gtest.h>

#include "adapters/workbook/xlsx/text_escapes.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {
namespace {

TEST(TextEscapes, AreReadAsTheCharacterOfTheirNumber) {
  EXPECT_EQ(UnescapeText("a_x000D_b"), "a\rb");
  EXPECT_EQ(UnescapeText("_x0041__x00e4__x20AC_"), "A\xC3\xA4\xE2\x82\xAC");
  EXPECT_EQ(UnescapeText("_x005F_x0041_"), "_x0041_");
}

TEST(TextEscapes, LeaveOtherTextAlone) {
  for (const char* text : {"", "_", "x_y", "_x", "_x004", "_x0041", "_x00G1_", "_X0041_", "a_b_c", "__"}) {
    EXPECT_EQ(UnescapeText(text), text);
    EXPECT_EQ(EscapeLookalikes(text), text);
  }
}

TEST(TextEscapes, ComeBackFromTextThatLooksLikeThem) {
  for (const char* text : {"_x0041_", "a_x000D_b", "_x0041_x0042_", "__x0041_", "_x005F_x0041_"}) {
    EXPECT_NE(EscapeLookalikes(text), text);
    EXPECT_EQ(UnescapeText(EscapeLookalikes(text)), text);
  }
}

TEST(TextUnits, CountCharactersBeyondTheBasicPlaneTwice) {
  EXPECT_EQ(Utf16Length(""), 0u);
  EXPECT_EQ(Utf16Length("abc"), 3u);
  EXPECT_EQ(Utf16Length("\xC3\xA4\xE2\x82\xAC"), 2u);
  EXPECT_EQ(Utf16Length("\xF0\x9F\x93\x88"), 2u);
}

TEST(CleanText, KeepsWhatIsText) {
  for (const char* text :
       {"", "plain", "\t\n\r", "\x01", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
        "\xEF\xBF\xBD", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_EQ(CleanText(text), text);
  }
}

TEST(CleanText, ReplacesWhatIsNone) {
  const std::string mark = "\xEF\xBF\xBD";
  EXPECT_EQ(CleanText("\x80"), mark) << "a continuation alone";
  EXPECT_EQ(CleanText("\xC3"), mark) << "cut off";
  EXPECT_EQ(CleanText("\xC0\x80"), mark + mark) << "overlong";
  EXPECT_EQ(CleanText("\xE0\x80\x80"), mark + mark + mark) << "overlong";
  EXPECT_EQ(CleanText("\xED\xA0\x80"), mark + mark + mark) << "half of a pair";
  EXPECT_EQ(CleanText("\xF4\x90\x80\x80"), mark + mark + mark + mark) << "beyond the last character";
  EXPECT_EQ(CleanText("\xEF\xBF\xBF"), mark + mark + mark) << "no character";
  EXPECT_EQ(CleanText("a\xFFz"), "a" + mark + "z");
  EXPECT_EQ(CleanText(std::string_view("a\0z", 3)), "a") << "text ends at a NUL";
}

}  // namespace
}  // namespace mirelo::workbook
