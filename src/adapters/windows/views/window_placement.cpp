// Where a form's window is and is put.

#include <algorithm>

#include "adapters/windows/views/form_window.h"
#include "host/form_state.h"

namespace mirelo::windows {

using host::WindowPlacement;

namespace {

RECT ScreenOf(const RECT& window) {
  MONITORINFO screen{};
  screen.cbSize = sizeof screen;
  ::GetMonitorInfoW(::MonitorFromRect(&window, MONITOR_DEFAULTTONEAREST), &screen);
  return screen.rcWork;
}

RECT Within(const RECT& window, const RECT& screen) {
  const LONG width = std::min(window.right - window.left, screen.right - screen.left);
  const LONG height = std::min(window.bottom - window.top, screen.bottom - screen.top);
  const LONG left = std::clamp(window.left, screen.left, screen.right - width);
  const LONG top = std::clamp(window.top, screen.top, screen.bottom - height);
  return {left, top, left + width, top + height};
}

// Windows counts the places of such windows from where its bar of tasks ends.
POINT OriginOf(const RECT& window) {
  MONITORINFO screen{};
  screen.cbSize = sizeof screen;
  ::GetMonitorInfoW(::MonitorFromRect(&window, MONITOR_DEFAULTTONEAREST), &screen);
  return {screen.rcWork.left - screen.rcMonitor.left, screen.rcWork.top - screen.rcMonitor.top};
}

}  // namespace

WindowPlacement FormWindow::Placement() const {
  WINDOWPLACEMENT native{};
  native.length = sizeof native;
  ::GetWindowPlacement(window_, &native);
  WindowPlacement placement;
  placement.state = host::PlacementState(form_.WindowState());
  placement.min_x = native.ptMinPosition.x;
  placement.min_y = native.ptMinPosition.y;
  placement.max_x = native.ptMaxPosition.x;
  placement.max_y = native.ptMaxPosition.y;
  const RECT& normal = native.rcNormalPosition;
  placement.normal = {normal.left, normal.top, normal.right, normal.bottom};
  return placement;
}

// A window that is not shown stays hidden, and opens in its form's state.
void FormWindow::Place(const WindowPlacement& placement) {
  const auto& wanted = placement.normal;
  RECT now{};
  ::GetWindowRect(window_, &now);
  const bool sizable = (::GetWindowLongW(window_, GWL_STYLE) & WS_THICKFRAME) != 0;
  const forms::layout::Extent frame = FrameExtent();
  const LONG width =
      sizable ? std::max<LONG>(wanted.right - wanted.left, least_.width + frame.width) : now.right - now.left;
  const LONG height = sizable ? std::max<LONG>(wanted.bottom - wanted.top, least_.height + frame.height)
                              : now.bottom - now.top;
  const POINT origin = OriginOf({wanted.left, wanted.top, wanted.right, wanted.bottom});
  RECT place{wanted.left + origin.x, wanted.top + origin.y, wanted.left + origin.x + width,
             wanted.top + origin.y + height};
  place = Within(place, ScreenOf(place));
  WINDOWPLACEMENT native{};
  native.length = sizeof native;
  ::GetWindowPlacement(window_, &native);
  native.showCmd = shown_ ? SW_SHOWNORMAL : SW_HIDE;
  native.rcNormalPosition = {place.left - origin.x, place.top - origin.y, place.right - origin.x,
                             place.bottom - origin.y};
  ::SetWindowPlacement(window_, &native);
  PutControls();
  const auto state = host::FormState(placement.state);
  if (state && *state != form_.WindowState()) return form_.WindowState(*state);
  ShowForm();  // its state again
}

void FormWindow::PutOnScreen(const RECT& wanted) const {
  const RECT place = Within(wanted, ScreenOf(wanted));
  ::SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// Over what is below, otherwise in the middle of the screen.
void FormWindow::Center(HWND over) const {
  RECT window{};
  ::GetWindowRect(window_, &window);
  RECT around{};
  const bool is_seen = over != nullptr && ::IsWindowVisible(over) != 0 && ::IsIconic(over) == 0;
  if (!is_seen || ::GetWindowRect(over, &around) == 0) around = ScreenOf({0, 0, 1, 1});
  const LONG width = window.right - window.left;
  const LONG height = window.bottom - window.top;
  const LONG left = around.left + (around.right - around.left - width) / 2;
  const LONG top = around.top + (around.bottom - around.top - height) / 2;
  PutOnScreen({left, top, left + width, top + height});
}

// A window that is too high for the screen scrolls, and gets as much wider as its scroll bar takes.
std::int32_t FormWindow::BarWidth() const {
  const bool is_too_high = least_.height + FrameExtent().height > ScreenExtent().height;
  return is_too_high ? ::GetSystemMetrics(SM_CXVSCROLL) : 0;
}

forms::layout::Extent FormWindow::ScreenExtent() const {
  RECT window{};
  ::GetWindowRect(window_, &window);
  const RECT screen = ScreenOf(window);
  return {static_cast<std::int32_t>(screen.right - screen.left),
          static_cast<std::int32_t>(screen.bottom - screen.top)};
}

forms::layout::Extent FormWindow::FrameExtent() const {
  RECT all{};
  ::AdjustWindowRectEx(&all, static_cast<DWORD>(::GetWindowLongW(window_, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(::GetWindowLongW(window_, GWL_EXSTYLE)));
  return {static_cast<std::int32_t>(all.right - all.left), static_cast<std::int32_t>(all.bottom - all.top)};
}

}  // namespace mirelo::windows
