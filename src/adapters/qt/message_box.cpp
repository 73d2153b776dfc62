#include "adapters/qt/message_box.h"

#include <QMessageBox>

#include "adapters/qt/form_window.h"
#include "adapters/qt/qt_desktop.h"
#include "adapters/qt/qt_loop.h"
#include "adapters/qt/text.h"

namespace mirelo::qt {

namespace {

using Answer = host::Desktop::Answer;

QMessageBox::StandardButtons ButtonsFor(int style) {
  switch (host::Desktop::ButtonsOf(style)) {
    case host::Desktop::kAbortRetryIgnore:
      return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case host::Desktop::kYesNo:
      return QMessageBox::Yes | QMessageBox::No;
    default:
      return QMessageBox::Ok;
  }
}

Answer AnswerFor(int button, int style) {
  switch (button) {
    case QMessageBox::Ok:
      return Answer::Ok;
    case QMessageBox::Abort:
      return Answer::Abort;
    case QMessageBox::Retry:
      return Answer::Retry;
    case QMessageBox::Ignore:
      return Answer::Ignore;
    case QMessageBox::Yes:
      return Answer::Yes;
    case QMessageBox::No:
      return Answer::No;
    default:
      return host::Desktop::MostCarefulAnswer(style);
  }
}

}  // namespace

QMessageBox::Icon IconFor(int style) {
  switch (host::Desktop::IconOf(style)) {
    case host::Desktop::kCritical:
      return QMessageBox::Critical;
    case host::Desktop::kExclamation:
      return QMessageBox::Warning;
    case host::Desktop::kInformation:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

Answer ShowBox(QtLoop& loop, QWidget* above, const std::string& text, int style, const std::string& title,
               QMessageBox::StandardButton preset) {
  QMessageBox box(IconFor(style), Shown(title), Shown(text), ButtonsFor(style), above);
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setWindowModality(Qt::ApplicationModal);
  if (preset != QMessageBox::NoButton) box.setDefaultButton(preset);
  box.show();
  loop.RunUntil([&box] { return !box.isVisible(); });
  return AnswerFor(box.result(), style);
}

Answer QtDesktop::MessageBox(const std::string& text, int style, const std::string& title) {
  return ShowBox(loop_, TopWindow(), text, style, title);
}

}  // namespace mirelo::qt
