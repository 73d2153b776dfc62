#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>

#include "adapters/qt/color.h"
#include "adapters/qt/text.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"
#include "forms/simple_controls.h"

namespace mirelo::qt {

namespace {

// A label that can be clicked: a field of its colour, which the keyboard reaches as well.
class Field final : public QWidget {
 public:
  explicit Field(forms::Label& label) : label_(label) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
  }

  void Follow(const View& view) { view_ = &view; }

  QSize sizeHint() const override {
    const int height = fontMetrics().height() + 16;
    return {std::max(height, fontMetrics().horizontalAdvance(Shown(label_.Caption())) + height), height};
  }
  QSize minimumSizeHint() const override {
    const int side = fontMetrics().height() + 14;
    return {side, side};
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool marked = label_.BorderStyle() != 0;
    const QColor fill = ColorOf(label_.BackColor(), palette());
    // The mark is a ring around the field, so that it shows beside every colour.
    const QRectF all = QRectF(rect());
    if (marked) {
      painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
      painter.drawRoundedRect(all.adjusted(1, 1, -1, -1), 4, 4);
    } else if (hasFocus() || underMouse()) {
      painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
      painter.drawRoundedRect(all.adjusted(1, 1, -1, -1), 4, 4);
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(fill);
    painter.drawRoundedRect(all.adjusted(3.5, 3.5, -3.5, -3.5), 2, 2);
    painter.setPen(InkOn(fill));
    painter.drawText(rect(), Qt::AlignCenter, Shown(label_.Caption()));
  }
  void mousePressEvent(QMouseEvent* event) override { pressed_ = event->button() == Qt::LeftButton; }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (!std::exchange(pressed_, false) || !rect().contains(event->position().toPoint())) return;
    Click();
  }
  void keyPressEvent(QKeyEvent* event) override {
    const int key = event->key();
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) return Click();
    QWidget::keyPressEvent(event);
  }

 private:
  void Click() {
    view_->Act([this] { label_.UserClick(); });
  }

  forms::Label& label_;
  const View* view_ = nullptr;
  bool pressed_ = false;
};

QWidget* MakeField(forms::Label& label, Views& views) {
  auto* widget = new Field(label);
  widget->Follow(views.Add(label, *widget, [&label, widget] {
    ShowState(label, *widget);
    widget->setAccessibleName(Shown(label.Caption().empty() ? label.ToolTipText() : label.Caption()));
    widget->update();
  }));
  return widget;
}

QWidget* MakeWords(forms::Label& label, Views& views) {
  auto* widget = new QLabel;
  widget->setTextFormat(Qt::PlainText);
  // A label that has no text yet is told messages of any length, which must not make the form wider.
  const bool tells = label.Caption().empty();
  widget->setSizePolicy(tells ? QSizePolicy::Ignored : QSizePolicy::Preferred, QSizePolicy::Fixed);
  views.Add(label, *widget, [&label, widget, tells] {
    ShowState(label, *widget);
    widget->setText(Shown(label.Caption()));
    if (tells && label.ToolTipText().empty()) widget->setToolTip(widget->text());
    widget->setFrameShape(label.BorderStyle() == 0 ? QFrame::NoFrame : QFrame::Box);
    const bool own_color = label.BackColor() != forms::kFaceBackground;
    QPalette palette;
    if (own_color) palette.setColor(QPalette::Window, ColorOf(label.BackColor(), palette));
    widget->setAutoFillBackground(own_color);
    if (widget->palette() != palette) widget->setPalette(palette);
  });
  return widget;
}

}  // namespace

QWidget* MakeWidget(forms::Label& label, Views& views) {
  return label.Click.HasSubscribers() ? MakeField(label, views) : MakeWords(label, views);
}

}  // namespace mirelo::qt
