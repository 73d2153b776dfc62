#include "adapters/calc/views/color.h"

namespace mirelo::calc {

std::optional<std::int32_t> OfficeColor(forms::Color color) {
  if (color < 0) return std::nullopt;
  return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

std::int32_t InkOn(std::int32_t ground) {
  constexpr int kMiddle = 140;
  const int gray = ((ground >> 16 & 0xFF) * 11 + (ground >> 8 & 0xFF) * 16 + (ground & 0xFF) * 5) / 32;
  return gray > kMiddle ? 0x000000 : 0xFFFFFF;
}

}  // namespace mirelo::calc
