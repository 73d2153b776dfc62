#include "adapters/windows/views/color.h"

#include "forms/light_color.h"

namespace mirelo::windows {

bool IsDesktopColor(forms::Color color) { return color < 0; }

COLORREF NativeColor(forms::Color color) {
  constexpr forms::Color kNumber = 0xFF;
  return IsDesktopColor(color) ? ::GetSysColor(color & kNumber) : static_cast<COLORREF>(color);
}

COLORREF InkOn(COLORREF ground) {
  const bool is_light = forms::IsLight(GetRValue(ground), GetGValue(ground), GetBValue(ground));
  return is_light ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

}  // namespace mirelo::windows
