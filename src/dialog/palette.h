#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "forms/control.h"

namespace mirelo {

struct PaletteColor {
  std::string_view name;
  forms::Color color;  // blue in the high byte, red in the low one
  std::int32_t index;  // in the spreadsheet's palette
};

// The fill colours that can be picked, column after column of five. The names are what people have always
// read, mistakes included. They are the spreadsheet's palette less its indexes 17 to 32, the colours of
// charts, so that each of them has an index there.
inline constexpr std::array<PaletteColor, 40> kPalette{{
    {"Black", 0x000000, 1},
    {"Dark Red", 0x000080, 9},
    {"Red", 0x0000FF, 3},
    {"Pinc", 0xFF00FF, 7},
    {"Rose", 0xCC99FF, 38},
    {"Brown", 0x003399, 53},
    {"Orange", 0x0066FF, 46},
    {"Light Orange", 0x0099FF, 45},
    {"Gold", 0x00CCFF, 44},
    {"Tan", 0x99CCFF, 40},
    {"Oleve Green", 0x003333, 52},
    {"Dark Yellow", 0x008080, 12},
    {"Lime", 0x00CC99, 43},
    {"Yellow", 0x00FFFF, 6},
    {"Light Yellow", 0x99FFFF, 36},
    {"Dark Green", 0x003300, 51},
    {"Green", 0x008000, 10},
    {"Sea Green", 0x669933, 50},
    {"Bright Green", 0x00FF00, 4},
    {"Light Green", 0xCCFFCC, 35},
    {"DarkTeal", 0x663300, 49},
    {"Teal", 0x808000, 14},
    {"Aqua", 0xCCCC33, 42},
    {"Turquoise", 0xFFFF00, 8},
    {"Light Turquoise", 0xFFFFCC, 34},
    {"DarkBlue", 0x800000, 11},
    {"Blue", 0xFF0000, 5},
    {"Light Blue", 0xFF6633, 41},
    {"Sky Blue", 0xFFCC00, 33},
    {"Pale Blue", 0xFFCC99, 37},
    {"Indigo", 0x993333, 55},
    {"Blue-Gray", 0x996666, 47},
    {"Violet", 0x800080, 13},
    {"Plum", 0x663399, 54},
    {"Lavender", 0xFF99CC, 39},
    {"Gray-80%", 0x333333, 56},
    {"Gray-50%", 0x808080, 16},
    {"Gray-40%", 0x969696, 48},
    {"Gray-25%", 0xC0C0C0, 15},
    {"White", 0xFFFFFF, 2},
}};

// In place of a colour: the spreadsheet's own number for no fill.
inline constexpr forms::Color kNoFill = -4142;
inline constexpr const char* kNoFillTag = "-4142";

}  // namespace mirelo
