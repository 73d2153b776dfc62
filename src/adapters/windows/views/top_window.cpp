#include "adapters/windows/views/top_window.h"

#include "adapters/windows/views/form_window.h"

namespace mirelo::windows {

HWND TopWindow(const std::vector<FormWindow*>& shown) {
  for (auto form = shown.rbegin(); form != shown.rend(); ++form) {
    if (::IsWindowVisible((*form)->window()) != 0) return (*form)->window();
  }
  const HWND active = ::GetActiveWindow();
  return active == nullptr ? nullptr : ::GetAncestor(active, GA_ROOT);
}

}  // namespace mirelo::windows
