#pragma once

namespace mirelo::forms {

// Whether black words can be read better than white ones on this colour, whose parts are 0 to 255.
constexpr bool IsLight(int red, int green, int blue) {
  constexpr int kMiddle = 140;
  return (red * 11 + green * 16 + blue * 5) / 32 > kMiddle;
}

}  // namespace mirelo::forms
