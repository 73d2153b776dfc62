#include "app/output/sheet_text.h"

#include <gtest/gtest.h>

namespace mirelo::app {
namespace {

using Side = ShownCell::Side;
using terminal::ColorDepth;
using terminal::Paint;
using terminal::Rgb;

ShownCell Text(const char* text) { return {text, Side::Left, true, {}}; }
ShownCell Number(const char* text) { return {text, Side::Right, false, {}}; }
ShownCell Blank() { return {}; }
ShownCell Filled(ShownCell cell, Rgb ground) {
  cell.paint.ground = ground;
  return cell;
}

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kBlack{};

TEST(SheetText, StandsUnderLettersAndBesideNumbers) {
  const ShownCells cells{9, 26, {{Text("MSFT"), Number("27.5")}, {Text("A"), Number("103.25")}}};
  EXPECT_EQ(LayOut(cells, 0, ColorDepth::None).text.Bytes(),
            "     Z      AA\n"
            " 9  MSFT    27.5\n"
            "10  A     103.25\n");
}

TEST(SheetText, PutsCellsToTheirSides) {
  const ShownCells cells{
      1, 1, {{Number("12345678")}, {{"left", Side::Left, false, {}}}, {{"mid", Side::Middle, false, {}}}}};
  EXPECT_EQ(LayOut(cells, 0, ColorDepth::None).text.Bytes(),
            "      A\n"
            "1  12345678\n"
            "2  left\n"
            "3    mid\n");
}

TEST(SheetText, LaysLongTextsOverEmptyCellsAtTheirRight) {
  const ShownCells cells{1,
                         1,
                         {{Text("SnapShot( 60 sec)"), Blank(), Blank()},
                          {Text("A caption of this"), Blank(), Text("end")},
                          {Text("MSFT"), Text("IBM"), Text("ORCL")}}};
  EXPECT_EQ(LayOut(cells, 0, ColorDepth::None).text.Bytes(),
            "    A     B    C\n"
            "1  SnapShot( 60 sec)\n"
            "2  A captio…  end\n"
            "3  MSFT  IBM  ORCL\n")
      << "the first goes on behind the last column";
  EXPECT_EQ(LayOut(cells, 20, ColorDepth::None).text.Bytes(),
            "    A     B    C\n"
            "1  SnapShot( 60 se…\n"
            "2  A captio…  end\n"
            "3  MSFT  IBM  ORCL\n")
      << "as far as the line does";
}

TEST(SheetText, LaysNoNumbersOverOtherCells) {
  const ShownCells cells{1, 1, {{Number("12345678901"), Blank()}, {Text("a"), Text("b")}}};
  EXPECT_EQ(LayOut(cells, 0, ColorDepth::None).text.Bytes(),
            "        A        B\n"
            "1  12345678901\n"
            "2  a            b\n");
}

TEST(SheetText, LeavesOutColumnsForWhichALineHasNoRoom) {
  const ShownCells cells{1, 1, {{Text("one"), Text("two"), Text("three")}}};
  const auto at = [&](std::size_t width) { return LayOut(cells, width, ColorDepth::None); };
  EXPECT_EQ(at(19).columns, 3u);
  EXPECT_EQ(at(18).columns, 2u);
  EXPECT_EQ(at(18).text.Bytes(),
            "    A    B\n"
            "1  one  two\n");
  EXPECT_EQ(at(11).columns, 1u);
  EXPECT_EQ(at(1).columns, 1u) << "the first one stands whatever the width is";
}

TEST(SheetText, CutsLongTextsWhereLinesHaveAnEnd) {
  const std::string text(50, 'x');
  const ShownCells cells{1, 1, {{{text, Side::Left, false, {}}}}};
  const std::string cut = "\n1  " + std::string(39, 'x') + "…\n";
  EXPECT_EQ(LayOut(cells, 80, ColorDepth::None).text.Bytes(), std::string(22, ' ') + "A" + cut);
  EXPECT_NE(LayOut(cells, 0, ColorDepth::None).text.Bytes().find(text), std::string::npos);
  EXPECT_EQ(LayOut(cells, 9, ColorDepth::None).text.Bytes(), "     A\n1  xxxx…\n");
}

TEST(SheetText, PaintsCellsToTheirFullWidth) {
  const ShownCells cells{1, 1, {{Filled(Number("1.5"), kWhite), Filled(Blank(), kBlack)}}};
  EXPECT_EQ(LayOut(cells, 0, ColorDepth::Palette).text.Bytes(),
            "  \033[2m  A    B  \033[0m\n"
            "\033[2m1 \033[0m\033[48;5;231m 1.5 \033[0m\033[48;5;16m     \033[0m\n");
}

TEST(SheetText, PaintsALongTextOnTheGroundOfEachCellThatItCovers) {
  const ShownCells cells{1, 1, {{Text("0123456789"), Filled(Blank(), kWhite), Blank()}}};
  EXPECT_EQ(LayOut(cells, 0, ColorDepth::Palette).text.Bytes(),
            "  \033[2m  A    B    C  \033[0m\n"
            "\033[2m1 \033[0m 0123\033[48;5;231m45678\033[0m9    \n");
}

}  // namespace
}  // namespace mirelo::app
