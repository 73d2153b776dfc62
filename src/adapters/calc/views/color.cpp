#include "adapters/calc/views/color.h"

#include "forms/light_color.h"

namespace mirelo::calc {

std::optional<std::int32_t> OfficeColor(forms::Color color) {
  if (color < 0) return std::nullopt;
  return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

std::int32_t InkOn(std::int32_t ground) {
  return forms::IsLight(ground >> 16 & 0xFF, ground >> 8 & 0xFF, ground & 0xFF) ? 0x000000 : 0xFFFFFF;
}

}  // namespace mirelo::calc
