#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "core/mGlobal.h"

namespace mirelo::mGlobal {

namespace {

constexpr std::int32_t kNoColor = -4142;

// The spreadsheet's standard palette, index and colour value (blue, green, red from the high byte down).
// Indexes 17 to 32, the colours of charts, are absent on purpose: nobody can pick them for a fill, and where
// no other index has the same colour it maps to none.
constexpr std::array<std::pair<std::int32_t, std::int32_t>, 40> kPalette{{
    {1, 0x000000},  {2, 0xFFFFFF},  {3, 0x0000FF},  {4, 0x00FF00},  {5, 0xFF0000},  {6, 0x00FFFF},
    {7, 0xFF00FF},  {8, 0xFFFF00},  {9, 0x000080},  {10, 0x008000}, {11, 0x800000}, {12, 0x008080},
    {13, 0x800080}, {14, 0x808000}, {15, 0xC0C0C0}, {16, 0x808080}, {33, 0xFFCC00}, {34, 0xFFFFCC},
    {35, 0xCCFFCC}, {36, 0x99FFFF}, {37, 0xFFCC99}, {38, 0xCC99FF}, {39, 0xFF99CC}, {40, 0x99CCFF},
    {41, 0xFF6633}, {42, 0xCCCC33}, {43, 0x00CC99}, {44, 0x00CCFF}, {45, 0x0099FF}, {46, 0x0066FF},
    {47, 0x996666}, {48, 0x969696}, {49, 0x663300}, {50, 0x669933}, {51, 0x003300}, {52, 0x003333},
    {53, 0x003399}, {54, 0x663399}, {55, 0x993333}, {56, 0x333333},
}};

}  // namespace

std::int32_t GetColorIndex(std::int32_t color) {
  const auto row =
      std::find_if(kPalette.begin(), kPalette.end(), [&](const auto& r) { return r.second == color; });
  return row == kPalette.end() ? kNoColor : row->first;
}

}  // namespace mirelo::mGlobal
