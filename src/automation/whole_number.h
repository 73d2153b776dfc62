#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

namespace mirelo {

// A whole number as such, up to 2^53 on either side of 0: beyond that not every whole number is one of a
// double. Nothing for any other number.
inline std::optional<std::int64_t> WholeNumber(double number) {
  constexpr double kMost = 9'007'199'254'740'992;
  if (std::trunc(number) != number || std::abs(number) > kMost) return std::nullopt;
  return static_cast<std::int64_t>(number);
}

}  // namespace mirelo
