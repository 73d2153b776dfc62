#include "adapters/qt/form_window.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "adapters/qt/form_builder.h"
#include "adapters/qt/pictures.h"
#include "adapters/qt/qt_loop.h"
#include "adapters/qt/scroll_page.h"
#include "adapters/qt/text.h"
#include "adapters/qt/twips.h"
#include "forms/button.h"
#include "forms/form.h"
#include "forms/layout/layouts.h"
#include "forms/tab.h"

namespace mirelo::qt {

namespace {

constexpr int kMargin = 12;

using Border = forms::Form::Border;

bool IsSizable(Border border) { return border == Border::Sizable || border == Border::SizableToolWindow; }

Qt::WindowFlags FlagsFor(Border border) {
  const bool tool = border == Border::FixedToolWindow || border == Border::SizableToolWindow;
  Qt::WindowFlags flags = Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint | (tool ? Qt::Tool : Qt::Dialog);
  if (border == Border::Sizable) flags |= Qt::WindowMinMaxButtonsHint;
  return flags;
}

forms::Form::State StateOf(Qt::WindowStates states) {
  if ((states & Qt::WindowMinimized) != 0) return forms::Form::State::Minimized;
  if ((states & Qt::WindowMaximized) != 0) return forms::Form::State::Maximized;
  return forms::Form::State::Normal;
}

Qt::WindowStates StatesFor(forms::Form::State state) {
  switch (state) {
    case forms::Form::State::Minimized:
      return Qt::WindowMinimized;
    case forms::Form::State::Maximized:
      return Qt::WindowMaximized;
    default:
      return Qt::WindowNoState;
  }
}

}  // namespace

FormWindow::FormWindow(forms::Form& form, QtLoop& loop, QWidget* above, const TopLine* top)
    : QWidget(above, FlagsFor(form.BorderStyle())),
      form_(form),
      loop_(loop),
      views_(loop),
      subscription_(form.Appearance.Subscribe([this] { ShowForm(); })) {
  setWindowModality(Qt::ApplicationModal);
  setWindowIcon(Picture("chart"));
  const TopLineWidget above_form = top == nullptr ? TopLineWidget{} : MakeTopLine(*top, loop);
  if (above_form.line != nullptr) above_form.line->setParent(this);
  first_ = FormBuilder(form, forms::layout::LayoutOf(form.Name()), views_).Build(*this, above_form.button);
  if (above_form.line != nullptr) qobject_cast<QBoxLayout*>(layout())->insertWidget(0, above_form.line);
  layout()->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  const QSize designed(PixelsOf(form.Width(), *this), PixelsOf(form.Height(), *this));
  const QSize size = designed.expandedTo(sizeHint());
  IsSizable(form.BorderStyle()) ? resize(Fitting(size)) : setFixedSize(size);
  Center();
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { FollowFocus(now); });
  ShowForm();
}

FormWindow::~FormWindow() { form_.Appearance.Unsubscribe(subscription_); }

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();  // the form hides, and so its window does
  if (QApplication::activeModalWidget() != this) return;
  loop_.Guard([this] { form_.Close(); });
}

// Keys that no control has taken.
void FormWindow::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: {
      // A button that has the focus is the one that Enter presses.
      auto* button = dynamic_cast<forms::Button*>(views_.ControlOf(focusWidget()));
      return loop_.Guard([&] { button != nullptr ? button->UserPress() : form_.UserEnter(); });
    }
    case Qt::Key_Escape:
      return loop_.Guard([this] { form_.UserEscape(); });
    default:
      QWidget::keyPressEvent(event);
  }
}

void FormWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange) return;
  const auto state = StateOf(windowState());
  if (state != form_.WindowState()) loop_.Guard([&] { form_.WindowState(state); });
}

void FormWindow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  RememberPlace();
}

void FormWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  RememberPlace();
}

void FormWindow::ShowForm() {
  setWindowTitle(Shown(form_.Caption()));
  if (StateOf(windowState()) != form_.WindowState()) setWindowState(StatesFor(form_.WindowState()));
  const bool comes_up = form_.Visible() && !isVisible();
  if (isVisible() != form_.Visible()) setVisible(form_.Visible());
  ShowFocus();
  if (comes_up && form_.ActiveControl() == nullptr) FocusFirst();
}

void FormWindow::ShowFocus() {
  const forms::Control* active = form_.ActiveControl();
  if (std::exchange(focused_, active) == active) return;
  QWidget* widget = views_.WidgetOf(active);
  if (widget == nullptr || views_.ControlOf(focusWidget()) == active) return;
  widget->setFocus(Qt::OtherFocusReason);
  Reveal(*widget);
}

// A form that gives no control the focus leaves it to the one that its layout names, else to the first one
// that can be used. A strip of tabs is
// passed over: what a person came for is on the tab.
void FormWindow::FocusFirst() {
  if (first_ != nullptr && first_->isEnabled()) return first_->setFocus(Qt::TabFocusReason);
  for (const forms::Control* control : form_.Controls()) {
    QWidget* widget = views_.WidgetOf(control);
    const bool takes_focus = widget != nullptr && (widget->focusPolicy() & Qt::TabFocus) != 0;
    if (!takes_focus || !control->IsUsable() || dynamic_cast<const forms::Tab*>(control) != nullptr) continue;
    return widget->setFocus(Qt::TabFocusReason);
  }
}

// The person has moved the focus.
void FormWindow::FollowFocus(QWidget* now) {
  if (now == nullptr || now->window() != this) return;
  forms::Control* control = views_.ControlOf(now);
  if (control == nullptr || control == form_.ActiveControl()) return;
  focused_ = control;
  loop_.Guard([&] { form_.ActiveControl(control); });
}

}  // namespace mirelo::qt
