#pragma once

#include <filesystem>

namespace mirelo::testing {

// A directory of its own below the system's place for temporary files, removed with all it holds at the end.
class TempDirectory {
 public:
  // Raises std::filesystem::filesystem_error when none can be made.
  TempDirectory();
  ~TempDirectory();
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

inline std::filesystem::path operator/(const TempDirectory& directory, const std::filesystem::path& name) {
  return directory.path() / name;
}

}  // namespace mirelo::testing
