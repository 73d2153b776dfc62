#pragma once

#include "com/system.h"

#include <utility>

#include "com/errors.h"

namespace mirelo::com {

// The thread that the objects live on: the one that asks first. COM brings the calls of others there; who
// calls past COM is refused.
bool IsOwnThread();
void RequireOwnThread();  // error 440 elsewhere

// AtTheBorder, and only there.
template <class Body>
HRESULT OnOwnThread(Body&& body, EXCEPINFO* place = nullptr) noexcept {
  return AtTheBorder(
      [&] {
        RequireOwnThread();
        return std::forward<Body>(body)();
      },
      place);
}

}  // namespace mirelo::com
