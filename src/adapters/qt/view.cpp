#include "adapters/qt/view.h"

#include <QWidget>
#include <utility>

#include "adapters/qt/qt_loop.h"
#include "adapters/qt/text.h"

namespace mirelo::qt {

View::View(forms::Control& control, QWidget& widget, QtLoop& loop, std::function<void()> show)
    : control_(control),
      widget_(widget),
      loop_(loop),
      show_(std::move(show)),
      subscription_(control.Appearance.Subscribe([this] { Show(); })) {}

View::~View() { control_.Appearance.Unsubscribe(subscription_); }

void View::Act(const std::function<void()>& act) const {
  loop_.Guard(act);
  loop_.Guard(show_);
}

View& Views::Add(forms::Control& control, QWidget& widget, std::function<void()> show) {
  views_.push_back(std::make_unique<View>(control, widget, loop_, std::move(show)));
  widgets_.emplace(&control, &widget);
  controls_.emplace(&widget, &control);  // the first control of a widget is the one that takes the focus
  return *views_.back();
}

void Views::ShowAll() const {
  for (const auto& view : views_) view->Show();
}

QWidget* Views::WidgetOf(const forms::Control* control) const {
  const auto widget = widgets_.find(control);
  return widget == widgets_.end() ? nullptr : widget->second;
}

forms::Control* Views::ControlOf(QWidget* widget) const {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    const auto control = controls_.find(widget);
    if (control != controls_.end()) return control->second;
  }
  return nullptr;
}

void ShowState(const forms::Control& control, QWidget& widget) {
  widget.setVisible(control.Visible());
  widget.setEnabled(control.Enabled());
  const QString tip = Shown(control.ToolTipText());
  if (widget.toolTip() != tip) widget.setToolTip(tip);
}

}  // namespace mirelo::qt
