#pragma once

#include "adapters/windows/views/native.h"

namespace mirelo::windows {

// Subclasses a window, to see its messages. A window has one watcher at most.
class WindowWatch {
 public:
  virtual ~WindowWatch() = default;
  // Called after the window's own procedure has handled the message.
  virtual void Seen(HWND window, UINT message) = 0;

  void Start(HWND window);
  // Nothing is seen from now on.
  static void End(HWND window);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
};

}  // namespace mirelo::windows
