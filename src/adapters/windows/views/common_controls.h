#pragma once

#include "adapters/windows/views/native.h"

namespace mirelo::windows {

// While this lives, windows are made with the look of today's Windows, whatever the program that we live in
// chose for its own. Where this module says nothing of it among its resources, they have the program's look.
class CommonControls {
 public:
  CommonControls();
  ~CommonControls();
  CommonControls(const CommonControls&) = delete;
  CommonControls& operator=(const CommonControls&) = delete;

 private:
  ULONG_PTR active_ = 0;  // 0 for none
};

}  // namespace mirelo::windows
