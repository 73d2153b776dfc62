#pragma once

#include <string>

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

  // The title of a box whose caller names none: the run time's default, which is the project's name.
  static constexpr const char* kDefaultTitle = "Mirelo";

  enum class Answer { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

  virtual ~Desktop() = default;

  // Shows a modal box and returns the button that was pressed. The message loop goes on meanwhile.
  virtual Answer MessageBox(const std::string& text, int style, const std::string& title) = 0;

  // Shows a failure report modally. The answer is the error dialog's tag: "ABORT", "RETRY", "IGNORE", or ""
  // when it was closed without an answer. `support_mail` is the address for its send button; empty switches
  // that off.
  virtual std::string ShowErrorReport(const std::string& report, const std::string& support_mail) = 0;

  virtual void Beep() = 0;
};

}  // namespace mirelo::host
