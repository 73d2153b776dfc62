#include <limits>

#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class TitleOfChart : public ChartedSheet {
 protected:
  TitleOfChart() { chart->HasTitle(true); }
  std::shared_ptr<ChartTitle> Title() { return chart->ChartTitle(); }

  std::shared_ptr<Chart> chart = AddChart();
  std::shared_ptr<Shape> shape = ShapeOf(chart);
};

TEST_P(TitleOfChart, ComesAndGoes) {
  EXPECT_FALSE(AddChart()->HasTitle()) << "a new chart has none";
  EXPECT_TRUE(chart->HasTitle());
  EXPECT_EQ(Title()->Text(), "Chart Title");
  const auto held = Title();
  held->Text("Last");
  chart->HasTitle(true);
  EXPECT_EQ(Title()->Text(), "Last") << "it was there";
  chart->HasTitle(false);
  EXPECT_FALSE(chart->HasTitle());
  EXPECT_EQ(NumberOf([&] { Title(); }), 1004);
  EXPECT_EQ(NumberOf([&] { held->Text(); }), 1004);
  chart->HasTitle(true);
  EXPECT_EQ(held->Text(), "Chart Title") << "it comes in anew";
}

TEST_P(TitleOfChart, HasATextThatCanAlsoBeReachedThroughItsCharacters) {
  Title()->Text("Last");
  EXPECT_EQ(Title()->Characters()->Text(), "Last");
  Title()->Characters()->Text("LastVolume");
  EXPECT_EQ(Title()->Text(), "LastVolume");
  Title()->Text("");
  EXPECT_EQ(Title()->Text(), "");
  Title()->Text("Größe \xE6\x97\xA5");
  EXPECT_EQ(Title()->Text(), "Größe \xE6\x97\xA5");
}

TEST_P(TitleOfChart, IsRefusedWhenItIsTooLong) {
  EXPECT_EQ(NumberOf([&] { Title()->Text(std::string(255, 'x')); }), 0);
  EXPECT_EQ(NumberOf([&] { Title()->Text(std::string(256, 'x')); }), 1004);
  EXPECT_EQ(NumberOf([&] { Title()->Characters()->Text(std::string(256, 'x')); }), 1004);
  EXPECT_EQ(Title()->Text(), std::string(255, 'x'));
}

TEST_P(TitleOfChart, HasAFontOfItsOwn) {
  const auto font = Title()->Font();
  font->Bold(true);
  EXPECT_EQ(font->Bold(), Variant(true));
  font->Bold(false);
  font->Size(8);
  font->ColorIndex(6);
  EXPECT_EQ(Title()->Font()->Bold(), Variant(false));
  EXPECT_EQ(Title()->Font()->Size(), Variant(8.0));
  EXPECT_EQ(Title()->Font()->ColorIndex(), Variant(6));
  EXPECT_EQ(Title()->Font()->Color(), Variant(0x00FFFF)) << "yellow";
  font->ColorIndex(xlColorIndexAutomatic);
  EXPECT_EQ(font->ColorIndex(), Variant(xlColorIndexAutomatic));
  EXPECT_EQ(NumberOf([&] { font->ColorIndex(57); }), 1004);
  for (const double size : {0.0, 0.9, 409.1, -8.0, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(NumberOf([&] { font->Size(size); }), 1004) << size;
  EXPECT_EQ(font->Size(), Variant(8.0));
}

TEST_P(TitleOfChart, HasAFontThatGrowsAndShrinksWithTheChartUntilItMustNot) {
  EXPECT_TRUE(Title()->AutoScaleFont());
  Title()->Font()->Size(16);
  shape->Width(shape->Width() / 2);
  shape->Height(shape->Height() / 2);
  EXPECT_EQ(Title()->Font()->Size(), Variant(8.0));
  Title()->AutoScaleFont(false);
  EXPECT_FALSE(Title()->AutoScaleFont());
  shape->Height(76);
  EXPECT_EQ(Title()->Font()->Size(), Variant(8.0));
}

TEST_P(TitleOfChart, StandsInTheMiddleAboveAtFirst) {
  const double left = Title()->Left();
  EXPECT_GT(left, 0);
  EXPECT_LT(left, 180);
  EXPECT_LT(Title()->Top(), 20);
  Title()->Text(std::string(30, 'x'));
  EXPECT_LT(Title()->Left(), left) << "it is wider now";
}

TEST_P(TitleOfChart, StandsWhereItIsPut) {
  Title()->Left(50.5);
  Title()->Top(100);
  EXPECT_EQ(Title()->Left(), 50.5);
  EXPECT_EQ(Title()->Top(), 100);
}

TEST_P(TitleOfChart, IsMovedSoThatItLiesWithinTheChart) {
  Title()->Text("Last");
  Title()->Font()->Size(8);
  Title()->Left(10'000);
  Title()->Top(10'000);
  EXPECT_GT(Title()->Left(), 300);
  EXPECT_LT(Title()->Left(), 360 - 8) << "all its letters fit beside";
  EXPECT_GT(Title()->Top(), 190);
  EXPECT_LE(Title()->Top(), 216 - 8) << "they fit below, too";
  Title()->Left(-5);
  Title()->Top(-5);
  EXPECT_EQ(Title()->Left(), 0);
  EXPECT_EQ(Title()->Top(), 0);
}

TEST_P(TitleOfChart, IsMovedFurtherTheLargerItIs) {
  const auto leftmost = [&] {
    Title()->Left(10'000);
    return Title()->Left();
  };
  Title()->Text("Last");
  Title()->Font()->Size(8);
  const double small = leftmost();
  Title()->Text("LastVolume");
  const double longer = leftmost();
  Title()->Font()->Size(12);
  const double larger = leftmost();
  EXPECT_LT(longer, small);
  EXPECT_LT(larger, longer);
  Title()->Text(std::string(255, 'W'));
  EXPECT_EQ(leftmost(), 0) << "wider than the chart";
}

TEST_P(TitleOfChart, StaysWithinTheChartWhenThatShrinks) {
  Title()->Left(10'000);
  Title()->Top(10'000);
  shape->Width(90);
  shape->Height(54);
  EXPECT_LT(Title()->Left(), 90);
  EXPECT_LT(Title()->Top(), 54);
}

TEST_P(TitleOfChart, RefusesPlacesThatAreNone) {
  EXPECT_EQ(NumberOf([&] { Title()->Left(std::numeric_limits<double>::quiet_NaN()); }), 1004);
  EXPECT_EQ(NumberOf([&] { Title()->Top(std::numeric_limits<double>::infinity()); }), 1004);
}

TEST_P(TitleOfChart, MayCastAShadow) {
  EXPECT_FALSE(Title()->Shadow());
  Title()->Shadow(true);
  EXPECT_TRUE(Title()->Shadow());
  Title()->Shadow(false);
  EXPECT_FALSE(Title()->Shadow());
}

TEST_P(TitleOfChart, HasABorder) {
  const auto border = Title()->Border();
  border->ColorIndex(56);
  border->Weight(xlHairline);
  border->LineStyle(xlContinuous);
  EXPECT_EQ(Title()->Border()->ColorIndex(), Variant(56));
  EXPECT_EQ(Title()->Border()->Weight(), Variant(1));
  EXPECT_EQ(Title()->Border()->LineStyle(), Variant(1));
}

TEST_P(TitleOfChart, HasAGround) {
  const auto ground = Title()->Interior();
  EXPECT_EQ(ground->ColorIndex(), Variant(xlColorIndexNone));
  EXPECT_EQ(ground->Pattern(), Variant(xlPatternNone));
  EXPECT_EQ(ground->Color(), Variant(0xFFFFFF));
  ground->ColorIndex(15);
  ground->PatternColorIndex(1);
  ground->Pattern(xlPatternSolid);
  EXPECT_EQ(Title()->Interior()->ColorIndex(), Variant(15));
  EXPECT_EQ(Title()->Interior()->Color(), Variant(0xC0C0C0));
  EXPECT_EQ(Title()->Interior()->PatternColorIndex(), Variant(1));
  EXPECT_EQ(Title()->Interior()->Pattern(), Variant(1));
  EXPECT_EQ(NumberOf([&] { ground->ColorIndex(57); }), 1004);
  EXPECT_EQ(NumberOf([&] { ground->PatternColorIndex(57); }), 1004);
  EXPECT_EQ(NumberOf([&] { ground->Pattern(2); }), 1004);
  EXPECT_EQ(ground->ColorIndex(), Variant(15));
}

TEST_P(TitleOfChart, MayLoseItsGround) {
  const auto ground = Title()->Interior();
  ground->ColorIndex(15);
  ground->Pattern(xlPatternNone);
  EXPECT_EQ(ground->ColorIndex(), Variant(xlColorIndexNone));
  ground->ColorIndex(15);
  ground->ColorIndex(xlColorIndexNone);
  EXPECT_EQ(ground->Pattern(), Variant(xlPatternNone));
  ground->ColorIndex(15);
  ground->Pattern(xlPatternAutomatic);
  EXPECT_EQ(ground->ColorIndex(), Variant(xlColorIndexNone));
}

MIRELO_AGAINST_ALL(TitleOfChart);

}  // namespace
}  // namespace mirelo::testing
