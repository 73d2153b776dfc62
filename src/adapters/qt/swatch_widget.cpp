#include <QFontMetrics>
#include <QPainter>
#include <QWidget>

#include "adapters/qt/color.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"
#include "forms/text_box.h"

namespace mirelo::qt {

namespace {

// As high as the button beside it, and something wider than high.
class SwatchWidget final : public QWidget {
 public:
  explicit SwatchWidget(const forms::TextBox& box) : box_(box) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }
  QSize sizeHint() const override {
    const int height = fontMetrics().height() + 8;
    return {2 * height, height};
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = ColorOf(box_.BackColor(), palette());
    if (!isEnabled()) fill.setAlphaF(0.4F);
    painter.setBrush(fill);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
  }

 private:
  const forms::TextBox& box_;
};

}  // namespace

QWidget* MakeSwatchWidget(forms::TextBox& box, Views& views) {
  auto* widget = new SwatchWidget(box);
  views.Add(box, *widget, [&box, widget] {
    ShowState(box, *widget);
    widget->setAccessibleDescription(ColorOf(box.BackColor(), widget->palette()).name());
    widget->update();
  });
  return widget;
}

}  // namespace mirelo::qt
