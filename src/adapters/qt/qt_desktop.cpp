#include "adapters/qt/qt_desktop.h"

#include <QApplication>
#include <QScreen>
#include <algorithm>

#include "adapters/qt/form_window.h"
#include "adapters/qt/qt_loop.h"
#include "forms/form.h"

namespace mirelo::qt {

void QtDesktop::ShowModal(forms::Form& form) {
  const auto top = top_lines_.find(form.Name());
  FormWindow window(form, loop_, TopWindow(), top == top_lines_.end() ? nullptr : &top->second);
  // Known before the form is loaded: loading may put it somewhere.
  struct Known {
    Known(std::vector<FormWindow*>& all, FormWindow& own) : windows(all) { windows.push_back(&own); }
    ~Known() { windows.pop_back(); }
    std::vector<FormWindow*>& windows;
  } const known(windows_, window);
  forms::ShowModal(form, [this](const std::function<bool()>& hidden) { loop_.RunUntil(hidden); });
}

void QtDesktop::Beep() { QApplication::beep(); }

void QtDesktop::SetForegroundWindow(forms::Form& form) {
  FormWindow* window = WindowOf(form);
  if (window == nullptr) return;
  window->raise();
  window->activateWindow();
}

std::optional<host::WindowPlacement> QtDesktop::GetWindowPlacement(forms::Form& form) {
  const FormWindow* window = WindowOf(form);
  if (window == nullptr) return std::nullopt;
  return window->Placement();
}

bool QtDesktop::SetWindowPlacement(forms::Form& form, const host::WindowPlacement& placement) {
  FormWindow* window = WindowOf(form);
  if (window == nullptr) return false;
  window->Place(placement);
  return true;
}

std::optional<host::WindowPlacement> QtDesktop::GetDesktopPlacement() {
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  host::WindowPlacement placement;
  placement.normal = {screen.left(), screen.top(), screen.left() + screen.width(),
                      screen.top() + screen.height()};
  return placement;
}

FormWindow* QtDesktop::WindowOf(const forms::Form& form) const {
  const auto window = std::find_if(windows_.rbegin(), windows_.rend(),
                                   [&](const FormWindow* shown) { return &shown->form() == &form; });
  return window == windows_.rend() ? nullptr : *window;
}

QWidget* QtDesktop::TopWindow() const { return windows_.empty() ? nullptr : windows_.back(); }

}  // namespace mirelo::qt
