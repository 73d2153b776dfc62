#include <QMessageBox>

#include "adapters/qt/form_window.h"
#include "adapters/qt/qt_desktop.h"
#include "adapters/qt/qt_loop.h"
#include "adapters/qt/text.h"

namespace mirelo::qt {

namespace {

using Answer = host::Desktop::Answer;

constexpr int kButtons = 0x0F;  // the part of a style that names the buttons
constexpr int kIcon = 0xF0;     // and the one that names the icon

QMessageBox::Icon IconFor(int style) {
  switch (style & kIcon) {
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

QMessageBox::StandardButtons ButtonsFor(int style) {
  switch (style & kButtons) {
    case host::Desktop::kAbortRetryIgnore:
      return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case host::Desktop::kYesNo:
      return QMessageBox::Yes | QMessageBox::No;
    default:
      return QMessageBox::Ok;
  }
}

// Closing a box with two or three buttons gives the most careful of its answers.
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
      break;
  }
  switch (style & kButtons) {
    case host::Desktop::kAbortRetryIgnore:
      return Answer::Abort;
    case host::Desktop::kYesNo:
      return Answer::No;
    default:
      return Answer::Ok;
  }
}

}  // namespace

Answer QtDesktop::MessageBox(const std::string& text, int style, const std::string& title) {
  QMessageBox box(IconFor(style), Shown(title), Shown(text), ButtonsFor(style), TopWindow());
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setWindowModality(Qt::ApplicationModal);
  box.show();
  loop_.RunUntil([&box] { return !box.isVisible(); });
  return AnswerFor(box.result(), style);
}

}  // namespace mirelo::qt
