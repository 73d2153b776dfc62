#include "adapters/windows/views/others_disabled.h"

namespace mirelo::windows {

OthersDisabled::OthersDisabled(HWND kept) {
  std::vector<HWND> all;
  ::EnumThreadWindows(
      ::GetCurrentThreadId(),
      [](HWND window, LPARAM found) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&all));
  for (const HWND window : all) {
    if (window == kept || ::IsWindowVisible(window) == 0 || ::IsWindowEnabled(window) == 0) continue;
    ::EnableWindow(window, FALSE);
    disabled_.push_back(window);
  }
}

OthersDisabled::~OthersDisabled() {
  for (const HWND window : disabled_) ::EnableWindow(window, TRUE);
}

}  // namespace mirelo::windows
