#include "adapters/windows/views/window_watch.h"

namespace mirelo::windows {

namespace {

constexpr const wchar_t* kWatcher = L"MireloWatcher";
constexpr const wchar_t* kFormer = L"MireloFormerProcedure";

}  // namespace

void WindowWatch::Start(HWND window) {
  const LONG_PTR former = ::GetWindowLongPtrW(window, GWLP_WNDPROC);
  ::SetPropW(window, kFormer, reinterpret_cast<HANDLE>(former));
  ::SetPropW(window, kWatcher, this);
  ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
}

// The procedure stays as long as the window: others may have put theirs in front.
void WindowWatch::End(HWND window) { ::RemovePropW(window, kWatcher); }

LRESULT CALLBACK WindowWatch::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  const auto former = reinterpret_cast<WNDPROC>(reinterpret_cast<LONG_PTR>(::GetPropW(window, kFormer)));
  if (message == WM_NCDESTROY) {
    ::RemovePropW(window, kWatcher);
    ::RemovePropW(window, kFormer);
  }
  const LRESULT answer = ::CallWindowProcW(former, window, message, first, second);
  auto* const watcher = static_cast<WindowWatch*>(::GetPropW(window, kWatcher));
  if (watcher != nullptr) watcher->Seen(window, message);
  return answer;
}

}  // namespace mirelo::windows
