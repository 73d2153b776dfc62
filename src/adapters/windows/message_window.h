#pragma once

#include <cstdint>
#include <functional>

struct HWND__;  // Windows' own

namespace mirelo::windows {

// A window that nobody sees, which takes messages for the thread that makes it. Whatever loop of messages the
// thread runs, the program's own or a dialog's, brings them here.
class MessageWindow {
 public:
  // Is called with each message of the numbers below, and with the socket or timer it is of. It must not
  // throw: the caller is Windows.
  using Handler = std::function<void(unsigned message, std::uintptr_t of)>;

  static constexpr unsigned kTimer = 0x0113;          // WM_TIMER
  static constexpr unsigned kSocket = 0x0400 + 0x4D;  // of the numbers that programs may use

  explicit MessageWindow(Handler handler);
  ~MessageWindow();
  MessageWindow(const MessageWindow&) = delete;
  MessageWindow& operator=(const MessageWindow&) = delete;

  HWND__* Handle() const { return window_; }
  void Handle(unsigned message, std::uintptr_t of) { handler_(message, of); }

 private:
  Handler handler_;
  HWND__* window_;
};

}  // namespace mirelo::windows
