#pragma once

#include <array>
#include <string_view>

#include "forms/control.h"

namespace mirelo {

struct PaletteColor {
  std::string_view name;
  forms::Color color;  // blue in the high byte, red in the low one
};

// The fill colours that can be picked, column after column of five. The names are what people have always
// read, mistakes included. They are the spreadsheet's palette less its indexes 17 to 32, the colours of
// charts, so that each of them has an index there (mGlobal::GetColorIndex).
inline constexpr std::array<PaletteColor, 40> kPalette{{
    {"Black", 0x000000},
    {"Dark Red", 0x000080},
    {"Red", 0x0000FF},
    {"Pinc", 0xFF00FF},
    {"Rose", 0xCC99FF},
    {"Brown", 0x003399},
    {"Orange", 0x0066FF},
    {"Light Orange", 0x0099FF},
    {"Gold", 0x00CCFF},
    {"Tan", 0x99CCFF},
    {"Oleve Green", 0x003333},
    {"Dark Yellow", 0x008080},
    {"Lime", 0x00CC99},
    {"Yellow", 0x00FFFF},
    {"Light Yellow", 0x99FFFF},
    {"Dark Green", 0x003300},
    {"Green", 0x008000},
    {"Sea Green", 0x669933},
    {"Bright Green", 0x00FF00},
    {"Light Green", 0xCCFFCC},
    {"DarkTeal", 0x663300},
    {"Teal", 0x808000},
    {"Aqua", 0xCCCC33},
    {"Turquoise", 0xFFFF00},
    {"Light Turquoise", 0xFFFFCC},
    {"DarkBlue", 0x800000},
    {"Blue", 0xFF0000},
    {"Light Blue", 0xFF6633},
    {"Sky Blue", 0xFFCC00},
    {"Pale Blue", 0xFFCC99},
    {"Indigo", 0x993333},
    {"Blue-Gray", 0x996666},
    {"Violet", 0x800080},
    {"Plum", 0x663399},
    {"Lavender", 0xFF99CC},
    {"Gray-80%", 0x333333},
    {"Gray-50%", 0x808080},
    {"Gray-40%", 0x969696},
    {"Gray-25%", 0xC0C0C0},
    {"White", 0xFFFFFF},
}};

// In place of a colour: the spreadsheet's own number for no fill.
inline constexpr forms::Color kNoFill = -4142;
inline constexpr const char* kNoFillTag = "-4142";

}  // namespace mirelo
