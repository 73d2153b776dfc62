#include "terminal/color.h"

#include <gtest/gtest.h>

namespace mirelo::terminal {
namespace {

constexpr Rgb kRed{255, 0, 0};
constexpr Rgb kWhite{255, 255, 255};

TEST(Color, TakesTheNearestOfThePalette) {
  struct {
    Rgb color;
    int index;
  } const cases[] = {{{0, 0, 0}, 16},        {kWhite, 231},          {kRed, 196},
                     {{0, 128, 0}, 28},      {{204, 204, 255}, 189}, {{102, 102, 153}, 60},
                     {{128, 128, 128}, 244}, {{192, 192, 192}, 250}, {{8, 8, 8}, 232}};
  for (const auto& [color, index] : cases) {
    EXPECT_EQ(PaletteIndex(color), index) << +color.red << ' ' << +color.green << ' ' << +color.blue;
  }
}

TEST(Color, PaintsAsDeepAsTheTerminalShows) {
  const Paint paint{kRed, kWhite, true, false};
  EXPECT_EQ(Painted(ShownText("x"), paint, ColorDepth::None).Bytes(), "x");
  EXPECT_EQ(Painted(ShownText("x"), paint, ColorDepth::Palette).Bytes(), "\033[1;38;5;196;48;5;231mx\033[0m");
  EXPECT_EQ(Painted(ShownText("x"), paint, ColorDepth::Full).Bytes(),
            "\033[1;38;2;255;0;0;48;2;255;255;255mx\033[0m");
}

TEST(Color, LeavesAloneWhatHasNoPaint) {
  EXPECT_EQ(Painted(ShownText("x"), {}, ColorDepth::Full).Bytes(), "x");
  EXPECT_EQ(Painted(ShownText(""), {kRed, {}, false, false}, ColorDepth::Full).Bytes(), "");
}

}  // namespace
}  // namespace mirelo::terminal
