#pragma once

#include <optional>
#include <string>

#include "host/window_placement.h"

namespace mirelo::forms {
class Form;
}

namespace mirelo::host {

// What the system shows to the person at the machine, and what it asks.
class Desktop {
 public:
  // Styles of a message box: one icon and one set of buttons, added.
  static constexpr int kOkOnly = 0;
  static constexpr int kAbortRetryIgnore = 2;
  static constexpr int kYesNo = 4;
  static constexpr int kCritical = 16;
  static constexpr int kExclamation = 48;
  static constexpr int kInformation = 64;

  // The two parts of a style.
  static constexpr int ButtonsOf(int style) { return style & 0x0F; }
  static constexpr int IconOf(int style) { return style & 0xF0; }

  // The title of a box whose caller names none: the run time's default, which is the project's name.
  static constexpr const char* kDefaultTitle = "Mirelo";

  enum class Answer { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

  // What a box of this style answers when it is closed without a button, or nobody is there.
  static constexpr Answer MostCarefulAnswer(int style) {
    switch (ButtonsOf(style)) {
      case kAbortRetryIgnore:
        return Answer::Abort;
      case kYesNo:
        return Answer::No;
      default:
        return Answer::Ok;
    }
  }

  // Results of the shell, of those that are told apart.
  static constexpr int kShellOutOfMemory = 8;
  static constexpr int kShellSharingViolation = 26;
  static constexpr int kShellDdeTimeout = 28;
  static constexpr int kShellDdeTransactionFailed = 29;
  static constexpr int kShellDdeBusy = 30;
  static constexpr int kShellNoProgram = 31;
  static constexpr int kShellStarted = 33;

  virtual ~Desktop() = default;

  // Shows a modal box and returns the button that was pressed. The message loop goes on meanwhile.
  virtual Answer MessageBox(const std::string& text, int style, const std::string& title) = 0;

  // Shows a form until it is hidden, by forms::ShowModal. The message loop goes on meanwhile, and forms may
  // be shown over it. A desktop that nobody sits at ends the form by itself.
  virtual void ShowModal(forms::Form& form) = 0;

  virtual void Beep() = 0;
  // Asks the desktop to raise a form that is shown above all other windows. A desktop may refuse.
  virtual void SetForegroundWindow(forms::Form& form) = 0;

  // Where a form's window is, or will be when it is shown; nothing where there are no windows.
  virtual std::optional<WindowPlacement> GetWindowPlacement(forms::Form& form) = 0;
  // Moves a form's window to a place; false when that cannot be. A window always stays within reach: a place
  // that lies off every screen is moved onto one. A form that is not shown stays hidden, and opens in its own
  // window state.
  virtual bool SetWindowPlacement(forms::Form& form, const WindowPlacement& placement) = 0;
  // The screen as a window: its `normal` is the whole desktop.
  virtual std::optional<WindowPlacement> GetDesktopPlacement() = 0;

  // Opens a file or an address with the program that the desktop has for it, and does not wait for that
  // program. The result is the shell's: above 32 for success, otherwise what went wrong, see kShell above.
  virtual int ShellExecuteA(const std::string& verb, const std::string& file) = 0;
};

}  // namespace mirelo::host
