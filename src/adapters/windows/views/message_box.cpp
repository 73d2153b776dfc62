#include "adapters/windows/views/native.h"

#include "adapters/windows/views/common_controls.h"
#include "adapters/windows/views/native_desktop.h"
#include "adapters/windows/views/others_disabled.h"
#include "adapters/windows/views/top_window.h"
#include "adapters/windows/window_loop.h"
#include "automation/wide_text.h"

namespace mirelo::windows {

namespace {

using Answer = host::Desktop::Answer;

// A style's numbers are Windows' own. Others are not passed on: some make boxes that nobody sees.
UINT StyleFor(int style) {
  UINT native = MB_OK;
  switch (host::Desktop::ButtonsOf(style)) {
    case host::Desktop::kAbortRetryIgnore:
      native = MB_ABORTRETRYIGNORE;
      break;
    case host::Desktop::kYesNo:
      native = MB_YESNO;
      break;
    default:
      break;
  }
  switch (host::Desktop::IconOf(style)) {
    case host::Desktop::kCritical:
      return native | MB_ICONERROR;
    case host::Desktop::kExclamation:
      return native | MB_ICONWARNING;
    case host::Desktop::kInformation:
      return native | MB_ICONINFORMATION;
    default:
      return native;
  }
}

// A box that Windows took away, or could not show, was not answered.
Answer AnswerFor(int pressed, int style) {
  const int buttons = host::Desktop::ButtonsOf(style);
  switch (pressed) {
    case IDYES:
      return Answer::Yes;
    case IDNO:
      return Answer::No;
    case IDABORT:
      return Answer::Abort;
    case IDRETRY:
      return Answer::Retry;
    case IDIGNORE:
      return Answer::Ignore;
    case IDOK:
      return buttons == host::Desktop::kOkOnly ? Answer::Ok : host::Desktop::MostCarefulAnswer(style);
    default:
      return host::Desktop::MostCarefulAnswer(style);
  }
}

}  // namespace

Answer NativeDesktop::MessageBox(const std::string& text, int style, const std::string& title) {
  return Box(text, style, title, MB_DEFBUTTON1);
}

// Windows waits for the answer by itself, and handles the thread's messages meanwhile. One that nobody owns
// comes to the front.
Answer NativeDesktop::Box(const std::string& text, int style, const std::string& title, unsigned preset) {
  const HWND owner = TopWindow(windows_);
  const OthersDisabled others(owner);
  const CommonControls look;
  const UINT front = owner == nullptr ? MB_SETFOREGROUND : 0;
  int pressed = 0;
  loop_.WaitIn(
      [&] {
        pressed = ::MessageBoxW(owner, WideText(text).c_str(), WideText(title).c_str(),
                                StyleFor(style) | preset | front);
      },
      [] {});
  return AnswerFor(pressed, style);
}

}  // namespace mirelo::windows
