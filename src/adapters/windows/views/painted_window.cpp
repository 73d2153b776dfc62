#include "adapters/windows/views/painted_window.h"

namespace mirelo::windows {

RECT PaintedWindow::Room() const {
  RECT room{};
  ::GetClientRect(window_, &room);
  return room;
}

std::shared_ptr<PaintedClass> PaintedClass::Known() {
  static std::weak_ptr<PaintedClass> known;
  auto one = known.lock();
  if (!one) known = one = std::make_shared<PaintedClass>();
  return one;
}

PaintedClass::PaintedClass() {
  WNDCLASSEXW look{};
  look.cbSize = sizeof look;
  look.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
  look.lpfnWndProc = Procedure;
  look.hInstance = OwnModule();
  look.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
  look.lpszClassName = PaintedWindow::kClass;
  ::RegisterClassExW(&look);
}

PaintedClass::~PaintedClass() { ::UnregisterClassW(PaintedWindow::kClass, OwnModule()); }

LRESULT CALLBACK PaintedClass::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_NCCREATE) {
    const auto* made = reinterpret_cast<const CREATESTRUCTW*>(second);
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made->lpCreateParams));
    static_cast<PaintedWindow*>(made->lpCreateParams)->window_ = window;
  }
  auto* painted = reinterpret_cast<PaintedWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  if (painted != nullptr && message == WM_NCDESTROY) {
    painted->window_ = nullptr;
    ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
  } else if (painted != nullptr) {
    if (const auto answer = painted->Handle(message, first, second)) return *answer;
  }
  return ::DefWindowProcW(window, message, first, second);
}

Painting::Painting(HWND window) : window_(window) {
  const HDC screen = ::BeginPaint(window_, &paint_);
  ::GetClientRect(window_, &room_);
  drawn_ = ::CreateCompatibleDC(screen);
  bitmap_ = ::CreateCompatibleBitmap(screen, room_.right > 0 ? room_.right : 1,
                                     room_.bottom > 0 ? room_.bottom : 1);
  former_ = ::SelectObject(drawn_, bitmap_);
  ::SetBkMode(drawn_, TRANSPARENT);
}

Painting::~Painting() {
  ::BitBlt(paint_.hdc, 0, 0, room_.right, room_.bottom, drawn_, 0, 0, SRCCOPY);
  ::SelectObject(drawn_, former_);
  ::DeleteObject(bitmap_);
  ::DeleteDC(drawn_);
  ::EndPaint(window_, &paint_);
}

void Fill(HDC context, const RECT& place, COLORREF color) {
  ::SetDCBrushColor(context, color);
  ::FillRect(context, &place, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
}

HINSTANCE OwnModule() {
  HMODULE own = nullptr;
  ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(reinterpret_cast<const void*>(&OwnModule)), &own);
  return own;
}

}  // namespace mirelo::windows
