#pragma once

#include <filesystem>

namespace mirelo::sodium {

// Keeps other processes that want the same from changing what is in a folder, as long as this lives. It dies
// with its process. The folder is made with mode 0700 if absent. Error 75, with the folder and the reason.
class FolderLock {
 public:
  // Waits until it is free.
  explicit FolderLock(const std::filesystem::path& folder);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int descriptor_;
};

}  // namespace mirelo::sodium
