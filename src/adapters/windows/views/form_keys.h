#pragma once

#include "adapters/windows/views/native.h"

namespace mirelo::windows {

// Keys that go to a form's window, and to the windows in it, come to the form first, whichever loop takes the
// thread's messages: that of a program which knows nothing of our windows, too.
class FormKeys {
 public:
  // What the form's window is sent for each message of a key; its first argument names the message.
  static constexpr UINT kKey = WM_APP + 2;

  explicit FormKeys(HWND form);
  ~FormKeys();
  FormKeys(const FormKeys&) = delete;
  FormKeys& operator=(const FormKeys&) = delete;

  // The message of that name, once.
  static MSG Take(WPARAM name);

 private:
  static LRESULT CALLBACK Look(int code, WPARAM removed, LPARAM message);

  HWND form_;
};

}  // namespace mirelo::windows
