#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/variant.h"

namespace mirelo {

// How a quote table is coloured: five indexes of the spreadsheet's palette, parted by commas. In their order
// the header's font and fill, the fill of even and of odd ticker rows, and one that nothing reads.
struct ColorScheme {
  std::string_view style;
  std::string_view colors;
};

inline constexpr std::array kColorSchemes{
    ColorScheme{"Green", "2,50,2,35,7"},
    ColorScheme{"Blue", "2,47,2,24,7"},
    ColorScheme{"Yellow", "2,16,2,36,14"},
};

// The colours of the style with exactly this name; those of Green for every other name, "None" included.
constexpr std::string_view ColorsOfStyle(std::string_view style) {
  for (const ColorScheme& scheme : kColorSchemes) {
    if (scheme.style == style) return scheme.colors;
  }
  return kColorSchemes.front().colors;
}

enum class SchemePart : std::size_t { HeaderFont, HeaderFill, EvenRowFill, OddRowFill };

// The palette index of a part of a scheme that was split at its commas. Error 9 for a scheme without it.
inline std::int32_t ColorOf(const std::vector<std::string>& colors, SchemePart part) {
  const auto index = static_cast<std::size_t>(part);
  if (index >= colors.size()) throw Errors::SubscriptOutOfRange();
  return Variant(colors[index]).ToInt32();
}

}  // namespace mirelo
