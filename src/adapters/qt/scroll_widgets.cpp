// A scroll bar of its own, and one whose arrows belong to a text box.

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <cstdlib>

#include "adapters/qt/text.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"
#include "forms/scroll_bar.h"
#include "forms/text_box.h"

namespace mirelo::qt {

namespace {

// From the top, which stands for Min, whichever way the values run.
int PlaceOf(const forms::ScrollBar& bar) { return std::abs(bar.Value() - bar.Min()); }
std::int32_t ValueAt(const forms::ScrollBar& bar, int place) {
  return bar.Min() < bar.Max() ? bar.Min() + place : bar.Min() - place;
}

class SpinBox final : public QAbstractSpinBox {
 public:
  SpinBox(forms::TextBox& box, forms::ScrollBar& bar) : box_(box), bar_(bar) {
    // As wide as the longest number of the bar needs.
    const auto longest = std::max(std::to_string(bar.Min()).size(), std::to_string(bar.Max()).size());
    lineEdit()->setMinimumWidth(
        fontMetrics().horizontalAdvance(QString(static_cast<int>(longest) + 1, QLatin1Char('0'))));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }

  QLineEdit* Edit() const { return lineEdit(); }
  void Follow(const View& arrows) { arrows_ = &arrows; }

  void Show() {
    ShowState(box_, *this);
    if (const QString text = Shown(box_.Text()); lineEdit()->text() != text) lineEdit()->setText(text);
    update();
  }

  // Up is towards the bar's top.
  void stepBy(int steps) override {
    arrows_->Act([&] {
      if (steps == 1) return bar_.UserStepUp();
      if (steps == -1) return bar_.UserStepDown();
      bar_.UserDrag(ValueAt(bar_, std::max(0, PlaceOf(bar_) - steps)));
    });
    lineEdit()->selectAll();
  }

  QSize sizeHint() const override {
    const QSize usual = QAbstractSpinBox::sizeHint();
    return {lineEdit()->minimumWidth() + 2 * usual.height(), usual.height()};
  }

 protected:
  StepEnabled stepEnabled() const override {
    if (!bar_.IsUsable()) return StepNone;
    StepEnabled steps = StepNone;
    if (bar_.Value() != bar_.Min()) steps |= StepUpEnabled;
    if (bar_.Value() != bar_.Max()) steps |= StepDownEnabled;
    return steps;
  }

 private:
  forms::TextBox& box_;
  forms::ScrollBar& bar_;
  const View* arrows_ = nullptr;
};

}  // namespace

QWidget* MakeSpinWidget(forms::TextBox& box, forms::ScrollBar& bar, Views& views) {
  auto* widget = new SpinBox(box, bar);
  const View& text = views.Add(box, *widget, [widget] { widget->Show(); });
  widget->Follow(views.Add(bar, *widget, [widget] { widget->update(); }));
  QObject::connect(widget->Edit(), &QLineEdit::textEdited, widget,
                   [&box, &text](const QString& typed) { text.Act([&] { box.UserEdit(Typed(typed)); }); });
  return widget;
}

QWidget* MakeWidget(forms::ScrollBar& bar, Views& views) {
  auto* widget = new QScrollBar(Qt::Vertical);
  const View& view = views.Add(bar, *widget, [&bar, widget] {
    ShowState(bar, *widget);
    const QSignalBlocker quiet(widget);
    widget->setRange(0, std::abs(bar.Max() - bar.Min()));
    widget->setValue(PlaceOf(bar));
  });
  QObject::connect(widget, &QScrollBar::valueChanged, widget,
                   [&bar, &view](int place) { view.Act([&] { bar.UserDrag(ValueAt(bar, place)); }); });
  return widget;
}

}  // namespace mirelo::qt
