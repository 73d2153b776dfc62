#pragma once

#include <filesystem>

namespace mirelo::app {

// A new folder of this program's own below the system's temporary folder, removed with all it holds at the
// end.
class TemporaryFolder {
 public:
  // Raises error 75 when it cannot be made.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace mirelo::app
