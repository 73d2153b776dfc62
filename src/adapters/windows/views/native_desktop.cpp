#include "adapters/windows/views/native.h"

#include "adapters/windows/views/native_desktop.h"

#include <algorithm>

#include "adapters/windows/views/form_window.h"
#include "adapters/windows/views/top_window.h"
#include "adapters/windows/window_loop.h"
#include "forms/form.h"

namespace mirelo::windows {

void NativeDesktop::ShowModal(forms::Form& form) {
  FormWindow window(form, loop_, TopWindow(windows_),
                    [this, &form](const std::string& question) { return Asks(question, form.Caption()); });
  // Known before the form is loaded: loading may put it somewhere.
  struct Known {
    Known(std::vector<FormWindow*>& all, FormWindow& own) : windows(all) { windows.push_back(&own); }
    ~Known() { windows.pop_back(); }
    std::vector<FormWindow*>& windows;
  } const known(windows_, window);
  forms::ShowModal(form, [this](const std::function<bool()>& hidden) { loop_.RunUntil(hidden); });
}

void NativeDesktop::Beep() { ::MessageBeep(MB_OK); }

void NativeDesktop::SetForegroundWindow(forms::Form& form) {
  if (const FormWindow* window = WindowOf(form)) ::SetForegroundWindow(window->window());
}

std::optional<host::WindowPlacement> NativeDesktop::GetWindowPlacement(forms::Form& form) {
  const FormWindow* window = WindowOf(form);
  if (window == nullptr) return std::nullopt;
  return window->Placement();
}

bool NativeDesktop::SetWindowPlacement(forms::Form& form, const host::WindowPlacement& placement) {
  FormWindow* window = WindowOf(form);
  if (window == nullptr) return false;
  window->Place(placement);
  return true;
}

std::optional<host::WindowPlacement> NativeDesktop::GetDesktopPlacement() {
  host::WindowPlacement placement;
  placement.normal = {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
  return placement;
}

FormWindow* NativeDesktop::WindowOf(const forms::Form& form) const {
  const auto window = std::find_if(windows_.rbegin(), windows_.rend(),
                                   [&](const FormWindow* shown) { return &shown->form() == &form; });
  return window == windows_.rend() ? nullptr : *window;
}

bool NativeDesktop::Asks(const std::string& question, const std::string& title) {
  return Box(question, kYesNo, title, MB_DEFBUTTON2) == Answer::Yes;
}

}  // namespace mirelo::windows
