#include "adapters/windows/system.h"

#include "adapters/windows/message_window.h"

#include <memory>
#include <system_error>
#include <utility>

// Where the linker puts this module, be it a program or a library.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier): the linker's name

namespace mirelo::windows {

namespace {

constexpr const wchar_t* kClassName = L"Mirelo.MessageWindow";

HINSTANCE OwnModule() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM of, LPARAM more) {
  if (message == MessageWindow::kTimer || message == MessageWindow::kSocket) {
    const LONG_PTR kept = ::GetWindowLongPtrW(window, GWLP_USERDATA);
    auto* const owner = reinterpret_cast<MessageWindow*>(kept);
    if (owner != nullptr) owner->Handle(message, of);
    return 0;
  }
  return ::DefWindowProcW(window, message, of, more);
}

void RegisterClassOnce() {
  static const ATOM registered = [] {
    WNDCLASSEXW of_ours{};
    of_ours.cbSize = sizeof of_ours;
    of_ours.lpfnWndProc = OnMessage;
    of_ours.hInstance = OwnModule();
    of_ours.lpszClassName = kClassName;
    return ::RegisterClassExW(&of_ours);
  }();
  (void)registered;  // the window that is made of it says what is wrong
}

}  // namespace

MessageWindow::MessageWindow(Handler handler) : handler_(std::move(handler)) {
  RegisterClassOnce();
  window_ = ::CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, OwnModule(), nullptr);
  if (window_ == nullptr) {
    throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), "CreateWindow");
  }
  ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

MessageWindow::~MessageWindow() { ::DestroyWindow(window_); }

}  // namespace mirelo::windows
