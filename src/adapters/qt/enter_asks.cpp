#include "adapters/qt/enter_asks.h"

#include <QKeyEvent>
#include <QWidget>
#include <utility>

#include "adapters/qt/message_box.h"
#include "adapters/qt/qt_loop.h"
#include "adapters/qt/text.h"
#include "forms/simple_controls.h"

namespace mirelo::qt {

EnterAsks::EnterAsks(QWidget& widget, forms::Label& label, std::string question, QtLoop& loop)
    : QObject(&widget), widget_(widget), label_(label), question_(std::move(question)), loop_(loop) {
  widget.installEventFilter(this);
}

bool EnterAsks::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent*>(event)->key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  loop_.Guard([this] { Ask(); });
  return true;
}

void EnterAsks::Ask() const {
  QWidget* const window = widget_.window();
  const auto answer = ShowBox(loop_, window, question_, host::Desktop::kYesNo, Typed(window->windowTitle()),
                              QMessageBox::No);  // who presses Enter twice has not read it
  if (answer == host::Desktop::Answer::Yes) label_.UserClick();
}

}  // namespace mirelo::qt
