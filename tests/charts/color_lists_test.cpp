// The 27 lists of colours, derived here from the rules behind them.

#include "charts/color_lists.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>

#include "automation/text.h"

namespace mirelo::testing {
namespace {

const struct {
  const char* name;
  const char* ground;  // chart area and plot area, fore and back colour each
} kStyles[] = {{"Blue", "47,47,17,24"}, {"Green", "10,10,50,35"}, {"Yellow", "16,16,48,36"}};

const struct {
  const char* name;
  double change;
  const char* title;   // its ground, by the day's change
  const char* series;  // line, marker's ground and edge, by the last change
} kSigns[] = {
    {"above 0", 0.01, "10", "10,4,10"}, {"below 0", -0.01, "53", "53,3,53"}, {"0", 0, "16", "16,15,16"}};

constexpr const char* kTitleText = "6";
// Line, marker's ground and edge of points after a rise, after a fall, and unchanged.
constexpr const char* kPoints = "10,53,16,4,3,15,10,53,16";

TEST(ColorLists, FollowFromStyleAndSigns) {
  std::set<std::string_view> lists;
  for (const auto& style : kStyles) {
    for (const auto& today : kSigns) {
      for (const auto& now : kSigns) {
        SCOPED_TRACE(std::string(style.name) + ", today " + today.name + ", now " + now.name);
        const auto list = ChartColorList(now.change, today.change, style.name);
        EXPECT_EQ(list, Join({style.ground, today.title, kTitleText, now.series, kPoints}, ","));
        EXPECT_EQ(Split(list, ",").size(), 18U);
        lists.insert(list);
      }
    }
  }
  EXPECT_EQ(lists.size(), 27U);
}

TEST(ColorLists, AreKnownByHeart) {
  EXPECT_EQ(ChartColorList(1, 1, "Blue"), "47,47,17,24,10,6,10,4,10,10,53,16,4,3,15,10,53,16");
  EXPECT_EQ(ChartColorList(-1, -1, "Yellow"), "16,16,48,36,53,6,53,3,53,10,53,16,4,3,15,10,53,16");
  EXPECT_EQ(ChartColorList(0, 0, "Green"), "10,10,50,35,16,6,16,15,16,10,53,16,4,3,15,10,53,16");
}

TEST(ColorLists, TellTheSmallestChangeFromNone) {
  constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
  EXPECT_EQ(ChartColorList(kSmallest, -kSmallest, "Blue"), ChartColorList(1, -1, "Blue"));
  EXPECT_EQ(ChartColorList(-0.0, -0.0, "Blue"), ChartColorList(0, 0, "Blue"));
}

TEST(ColorLists, AreEmptyForStylesOfAnotherName) {
  for (const char* style : {"None", "", "blue", "BLUE", " Blue", "Blue ", "Green,", "Red"}) {
    EXPECT_EQ(ChartColorList(0, 0, style), "") << style;
  }
}

TEST(ColorLists, AreEmptyForChangesThatAreNoNumbers) {
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(ChartColorList(kNone, 0, "Blue"), "");
  EXPECT_EQ(ChartColorList(0, kNone, "Blue"), "");
}

}  // namespace
}  // namespace mirelo::testing
