#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/desktop.h"

namespace mirelo::windows {

class WindowLoop;
class FormWindow;

// The desktop of a person at Windows: boxes and forms are dialogs of Windows', above the active window of the
// program that uses the classes. While one is up, no other window of its thread takes what the person does;
// the loop goes on.
//
// A window that forms lie above takes them along when it goes, as their close boxes would.
class NativeDesktop : public host::Desktop {
 public:
  // The loop must outlive the desktop.
  explicit NativeDesktop(WindowLoop& loop) : loop_(loop) {}

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  void ShowModal(forms::Form& form) override;
  void Beep() override;
  void SetForegroundWindow(forms::Form& form) override;
  std::optional<host::WindowPlacement> GetWindowPlacement(forms::Form& form) override;
  bool SetWindowPlacement(forms::Form& form, const host::WindowPlacement& placement) override;
  std::optional<host::WindowPlacement> GetDesktopPlacement() override;
  int ShellExecuteA(const std::string& verb, const std::string& file) override;

  // The window of a form that is being shown; null for another.
  FormWindow* WindowOf(const forms::Form& form) const;

 private:
  bool Asks(const std::string& question, const std::string& title);
  Answer Box(const std::string& text, int style, const std::string& title, unsigned preset);

  WindowLoop& loop_;
  std::vector<FormWindow*> windows_;  // of the forms that are shown, the topmost last
};

}  // namespace mirelo::windows
