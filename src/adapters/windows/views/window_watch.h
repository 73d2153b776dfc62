#pragma once

#include "adapters/windows/views/native.h"

namespace mirelo::windows {

// Has the messages of a window of another class seen here, one watcher a window.
class WindowWatch {
 public:
  virtual ~WindowWatch() = default;
  // When the window's own class has handled it.
  virtual void Seen(HWND window, UINT message) = 0;

  void Start(HWND window);
  // Nothing is seen from now on.
  static void End(HWND window);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
};

}  // namespace mirelo::windows
