#include "forms/layout/measures.h"

#include <gtest/gtest.h>

#include "forms/light_color.h"

namespace mirelo::forms {
namespace {

TEST(LengthsOfADesign, GrowWithTheLettersAndNeverShrink) {
  EXPECT_EQ(layout::GrowthFor(12), 2);
  EXPECT_EQ(layout::GrowthFor(9), 1.5);
  EXPECT_EQ(layout::GrowthFor(6), 1);
  EXPECT_EQ(layout::GrowthFor(3), 1);
}

// Green is seen brightest, and blue darkest.
TEST(LightColors, AreThoseOnWhichBlackWordsAreReadBest) {
  EXPECT_TRUE(IsLight(255, 255, 255));
  EXPECT_TRUE(IsLight(255, 255, 0)) << "yellow";
  EXPECT_TRUE(IsLight(141, 141, 141));
  EXPECT_FALSE(IsLight(140, 140, 140));
  EXPECT_FALSE(IsLight(255, 0, 0)) << "red";
  EXPECT_FALSE(IsLight(0, 255, 0)) << "lime";
  EXPECT_TRUE(IsLight(0, 255, 128));
  EXPECT_FALSE(IsLight(100, 100, 255));
  EXPECT_FALSE(IsLight(0, 0, 0));
}

}  // namespace
}  // namespace mirelo::forms
