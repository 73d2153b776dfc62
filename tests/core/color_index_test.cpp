#include <gtest/gtest.h>

#include <cstdint>

#include "core/mGlobal.h"
#include "spreadsheet/palette.h"

namespace mirelo {
namespace {

struct Row {
  std::int32_t index;
  std::int32_t color;
};

constexpr Row kRows[] = {
    {1, 0x000000},  {2, 0xFFFFFF},  {3, 0x0000FF},  {4, 0x00FF00},  {5, 0xFF0000},  {6, 0x00FFFF},
    {7, 0xFF00FF},  {8, 0xFFFF00},  {9, 0x000080},  {10, 0x008000}, {11, 0x800000}, {12, 0x008080},
    {13, 0x800080}, {14, 0x808000}, {15, 0xC0C0C0}, {16, 0x808080}, {33, 0xFFCC00}, {34, 0xFFFFCC},
    {35, 0xCCFFCC}, {36, 0x99FFFF}, {37, 0xFFCC99}, {38, 0xCC99FF}, {39, 0xFF99CC}, {40, 0x99CCFF},
    {41, 0xFF6633}, {42, 0xCCCC33}, {43, 0x00CC99}, {44, 0x00CCFF}, {45, 0x0099FF}, {46, 0x0066FF},
    {47, 0x996666}, {48, 0x969696}, {49, 0x663300}, {50, 0x669933}, {51, 0x003300}, {52, 0x003333},
    {53, 0x003399}, {54, 0x663399}, {55, 0x993333}, {56, 0x333333},
};

TEST(ColorIndex, IsThatOfTheColourInThePalette) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.index);
    EXPECT_EQ(mGlobal::GetColorIndex(row.color), row.index);
  }
}

TEST(ColorIndex, IsNoColourForEveryOtherValue) {
  for (const std::int32_t color : {1, 0x010000, 0x0000FE, 0xFFFFFE, 0x1000000, -1, -4142}) {
    SCOPED_TRACE(color);
    EXPECT_EQ(mGlobal::GetColorIndex(color), -4142);
  }
}

// Those of the indexes 17 to 32 that no other index has.
TEST(ColorIndex, IsNoColourForTheChartColoursOfThePalette) {
  for (const std::int32_t color : {0xFF9999, 0xCCFFFF, 0x660066, 0x8080FF, 0xCC6600, 0xFFCCCC}) {
    SCOPED_TRACE(color);
    EXPECT_EQ(mGlobal::GetColorIndex(color), -4142);
  }
}

// Red stands in the low byte here, in the high one there.
TEST(ColorIndex, HasThatColourInTheSpreadsheetsPaletteAsWell) {
  for (const Row& row : kRows) {
    const std::int32_t there = spreadsheet::PaletteColor(row.index);
    EXPECT_EQ((there & 0xFF) << 16 | (there & 0xFF00) | (there >> 16 & 0xFF), row.color) << row.index;
  }
}

}  // namespace
}  // namespace mirelo
