#pragma once

#include <chrono>
#include <filesystem>

#include "adapters/proc/descriptor.h"

namespace mirelo::sodium {

// Keeps other processes that want the same from changing what is in a folder, as long as this lives. It dies
// with its process. The folder is made with mode 0700 if absent. Error 75, with the folder and the reason, or
// with who has the lock.
class FolderLock {
 public:
  // Waits until it is free, but no longer than that.
  FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds patience);

 private:
  proc::Descriptor descriptor_;
};

}  // namespace mirelo::sodium
