#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "host/excel/constants.h"

namespace mirelo::spreadsheet {

// The lines that cells can have: not every style comes in every weight.
struct LineKind {
  std::int32_t style;
  std::int32_t weight;
};

// By the number of a line (BorderLine::line). Of a style's kinds the thinnest comes first.
inline constexpr std::array<LineKind, 14> kLineKinds{{
    {host::excel::xlLineStyleNone, host::excel::xlThin},
    {host::excel::xlContinuous, host::excel::xlThin},
    {host::excel::xlContinuous, host::excel::xlMedium},
    {host::excel::xlDash, host::excel::xlThin},
    {host::excel::xlDot, host::excel::xlThin},
    {host::excel::xlContinuous, host::excel::xlThick},
    {host::excel::xlDouble, host::excel::xlThick},
    {host::excel::xlContinuous, host::excel::xlHairline},
    {host::excel::xlDash, host::excel::xlMedium},
    {host::excel::xlDashDot, host::excel::xlThin},
    {host::excel::xlDashDot, host::excel::xlMedium},
    {host::excel::xlDashDotDot, host::excel::xlThin},
    {host::excel::xlDashDotDot, host::excel::xlMedium},
    {host::excel::xlSlantDashDot, host::excel::xlMedium},
}};

// The number of the first line that fits; 0, which is no line, when none does.
template <class Fits>
std::uint8_t FirstLine(Fits&& fits) {
  const auto found = std::find_if(kLineKinds.begin() + 1, kLineKinds.end(), fits);
  return found == kLineKinds.end() ? std::uint8_t{0} : static_cast<std::uint8_t>(found - kLineKinds.begin());
}

inline std::uint8_t ThinnestLine(std::int32_t style) {
  return FirstLine([&](const LineKind& kind) { return kind.style == style; });
}
inline std::uint8_t LineOf(std::int32_t style, std::int32_t weight) {
  return FirstLine([&](const LineKind& kind) { return kind.style == style && kind.weight == weight; });
}

}  // namespace mirelo::spreadsheet
