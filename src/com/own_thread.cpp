#include "com/own_thread.h"

#include "automation/runtime_error.h"

namespace mirelo::com {

bool IsOwnThread() {
  static const DWORD own = ::GetCurrentThreadId();
  return ::GetCurrentThreadId() == own;
}

void RequireOwnThread() {
  if (IsOwnThread()) return;
  throw RuntimeError(440, "Mirelo's objects can be used on the thread alone that made the first of them");
}

}  // namespace mirelo::com
