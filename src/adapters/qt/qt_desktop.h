#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/qt/top_line.h"
#include "host/desktop.h"

class QWidget;

namespace mirelo::qt {

class FormWindow;
class QtLoop;

// The desktop of a person at a screen. While a box or form is up, only it takes what the person does; the
// message loop goes on.
class QtDesktop : public host::Desktop {
 public:
  // A Qt application must exist before the desktop; it and the loop must outlive it.
  explicit QtDesktop(QtLoop& loop) : loop_(loop) {}

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
  // The topmost window of a form, above which a box is to lie; null when there is none.
  QWidget* TopWindow() const;

  // Shows a line above the form of that name whenever the form is shown from now on.
  void PutAbove(const std::string& form, TopLine top) { top_lines_[form] = std::move(top); }

 private:
  QtLoop& loop_;
  std::map<std::string, TopLine> top_lines_;  // by the form's name
  std::vector<FormWindow*> windows_;          // of the forms that are shown, the topmost last
};

}  // namespace mirelo::qt
