#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <utility>

namespace mirelo::workbook {

// How the format tells gradients of two colours: the colours that one meets on the way, and the direction. A
// gradient is told by its style (MsoGradientStyle) and its variant: 1 runs from the fore colour to the back
// colour, 2 the other way; 3 has the fore colour in the middle, 4 the back colour.

inline constexpr std::int32_t kWholeGradient = 100'000;  // the way from its start to its end
// Directions in 60,000ths of a degree, clockwise from the right.
inline constexpr std::int32_t kHalfTurn = 10'800'000;
inline constexpr std::int32_t kRightDown = 2'700'000;

// Horizontal bands run downwards, vertical ones to the right.
inline constexpr std::array<std::pair<std::int32_t, std::uint8_t>, 4> kDirections{
    {{5'400'000, 1}, {0, 2}, {kRightDown, 3}, {8'100'000, 4}}};

constexpr bool HasColorInMiddle(std::uint8_t variant) { return variant == 3 || variant == 4; }
constexpr bool HasForeInMiddle(std::uint8_t variant) { return variant == 3; }

// Variants 2 and 3 are told as 1 and 4, the other way round.
constexpr std::int32_t AngleOf(std::uint8_t style, std::uint8_t variant) {
  for (const auto& [angle, of] : kDirections) {
    if (of == style) return variant == 2 || variant == 3 ? angle + kHalfTurn : angle;
  }
  return 0;
}

struct GradientKind {
  std::uint8_t style;
  std::uint8_t variant;
};
// Nothing for other directions.
constexpr std::optional<GradientKind> KindOf(std::int32_t angle, bool has_color_in_middle) {
  const bool is_turned = angle >= kHalfTurn;
  const std::uint8_t straight = has_color_in_middle ? 4 : 1;
  const std::uint8_t turned = has_color_in_middle ? 3 : 2;
  for (const auto& [direction, style] : kDirections) {
    if (direction == (is_turned ? angle - kHalfTurn : angle))
      return GradientKind{style, is_turned ? turned : straight};
  }
  return std::nullopt;
}

}  // namespace mirelo::workbook
