#pragma once

#include <optional>
#include <string>
#include <utility>

#include "host/desktop.h"

namespace mirelo::wire {

// A desktop that shows nothing: for work that nobody asked for with a click of theirs, and that must not put
// windows before whoever sits there. What would have been shown is kept as a text.
class QuietDesktop : public host::Desktop {
 public:
  // What was last to be shown; empty when nothing was since this was last asked.
  std::string TakeWords() { return std::exchange(words_, {}); }

  // As when it is closed without a button.
  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  // The form's button "Abort" is pressed where it has one; otherwise it is closed.
  void ShowModal(forms::Form& form) override;
  void Beep() override {}
  void SetForegroundWindow(forms::Form& /*form*/) override {}
  std::optional<host::WindowPlacement> GetWindowPlacement(forms::Form& /*form*/) override { return {}; }
  bool SetWindowPlacement(forms::Form& /*form*/, const host::WindowPlacement& /*placement*/) override {
    return false;
  }
  std::optional<host::WindowPlacement> GetDesktopPlacement() override { return {}; }
  int ShellExecuteA(const std::string& verb, const std::string& file) override;

 private:
  std::string words_;
};

}  // namespace mirelo::wire
