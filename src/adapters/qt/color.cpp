#include "adapters/qt/color.h"

#include <QPalette>
#include <cstdint>

#include "forms/light_color.h"

namespace mirelo::qt {

QColor ColorOf(forms::Color color, const QPalette& palette) {
  if (color == forms::kWindowBackground) return palette.color(QPalette::Base);
  if (color < 0) return palette.color(QPalette::Window);
  const auto bits = static_cast<std::uint32_t>(color);
  return QColor(static_cast<int>(bits & 0xFF), static_cast<int>(bits >> 8 & 0xFF),
                static_cast<int>(bits >> 16 & 0xFF));
}

QColor InkOn(const QColor& ground) {
  const bool is_light = forms::IsLight(ground.red(), ground.green(), ground.blue());
  return is_light ? QColor(Qt::black) : QColor(Qt::white);
}

}  // namespace mirelo::qt
