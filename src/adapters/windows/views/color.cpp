#include "adapters/windows/views/color.h"

namespace mirelo::windows {

bool IsDesktopColor(forms::Color color) { return color < 0; }

COLORREF NativeColor(forms::Color color) {
  constexpr forms::Color kNumber = 0xFF;
  return IsDesktopColor(color) ? ::GetSysColor(color & kNumber) : static_cast<COLORREF>(color);
}

COLORREF InkOn(COLORREF ground) {
  constexpr int kMiddle = 140;
  const int gray = (GetRValue(ground) * 11 + GetGValue(ground) * 16 + GetBValue(ground) * 5) / 32;
  return gray > kMiddle ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

}  // namespace mirelo::windows
