#pragma once

#include "adapters/windows/views/native.h"

#include <vector>

namespace mirelo::windows {

// Takes the other windows of this thread from the person, while a form or box is up. Those that were taken
// before stay so.
class OthersDisabled {
 public:
  explicit OthersDisabled(HWND kept);
  ~OthersDisabled();
  OthersDisabled(const OthersDisabled&) = delete;
  OthersDisabled& operator=(const OthersDisabled&) = delete;

 private:
  std::vector<HWND> disabled_;
};

}  // namespace mirelo::windows
