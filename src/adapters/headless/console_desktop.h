#pragma once

#include <deque>
#include <string>

#include "host/desktop.h"
#include "terminal/output.h"
#include "terminal/standard_streams.h"

namespace mirelo::headless {

// A desktop for a machine without a display: what would be shown is printed, and nobody is there to answer.
//
//   error: Dovanta2: Please choose the tickers.
//   question: Dovanta2: Overwrite the table?
//     answered: No
//   form: Error
//     Error: 13, (Type mismatch)
//     pressed: Abort
//
// Beeps are not heard, windows have no place, and addresses are printed instead of opened.
class ConsoleDesktop : public host::Desktop {
 public:
  // Answers that are given beforehand and used up from the front. When none is left, the most careful one is
  // given: a box gets Ok, Abort where it asks for Abort, Retry or Ignore, and No where it asks for Yes or No;
  // a form gets its button "Abort" pressed if it has one, else its cancel button.
  struct Script {
    std::deque<Answer> box_answers;
    std::deque<std::string> pressed;  // captions of buttons of forms; "" for the close box
  };

  // Prints to the standard error stream.
  ConsoleDesktop() : ConsoleDesktop(terminal::Err()) {}
  // `out` must outlive the desktop.
  explicit ConsoleDesktop(terminal::Output& out, Script script = {});

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  // Prints the form's caption and what its boxes of several lines hold, and presses one button. A form that
  // this does not end is closed.
  void ShowModal(forms::Form& form) override;
  void Beep() override {}
  void SetForegroundWindow(forms::Form& /*form*/) override {}
  std::optional<host::WindowPlacement> GetWindowPlacement(forms::Form& /*form*/) override {
    return std::nullopt;
  }
  bool SetWindowPlacement(forms::Form& /*form*/, const host::WindowPlacement& /*placement*/) override {
    return false;
  }
  std::optional<host::WindowPlacement> GetDesktopPlacement() override { return std::nullopt; }
  int ShellExecuteA(const std::string& verb, const std::string& file) override;

 private:
  void Press(forms::Form& form);

  terminal::Output& out_;
  Script script_;
};

}  // namespace mirelo::headless
