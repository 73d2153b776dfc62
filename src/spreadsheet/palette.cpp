#include "spreadsheet/palette.h"

#include <array>
#include <cstddef>

namespace mirelo::spreadsheet {

namespace {

// Indexes that are meant for charts and repeat some of the others.
constexpr std::int32_t kFirstForCharts = 17;
constexpr std::int32_t kLastForCharts = 32;

// Index 1 first.
constexpr std::array<Color, kPaletteSize> kPalette{
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,  //
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,  //
    0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,  //
    0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,  //
    0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,  //
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,  //
    0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};

constexpr int Square(int x) { return x * x; }

constexpr int Distance(Color a, Color b) {
  return Square((a >> 16 & 0xFF) - (b >> 16 & 0xFF)) + Square((a >> 8 & 0xFF) - (b >> 8 & 0xFF)) +
         Square((a & 0xFF) - (b & 0xFF));
}

}  // namespace

Color PaletteColor(std::int32_t index) { return kPalette[static_cast<std::size_t>(index - 1)]; }

std::int32_t NearestIndex(Color color) {
  std::int32_t nearest = 1;
  const auto look_at = [&](std::int32_t first, std::int32_t last) {
    for (std::int32_t index = first; index <= last; ++index) {
      if (Distance(color, PaletteColor(index)) < Distance(color, PaletteColor(nearest))) nearest = index;
    }
  };
  look_at(1, kFirstForCharts - 1);
  look_at(kLastForCharts + 1, kPaletteSize);
  look_at(kFirstForCharts, kLastForCharts);
  return nearest;
}

}  // namespace mirelo::spreadsheet
