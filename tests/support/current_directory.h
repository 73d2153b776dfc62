#pragma once

#include <filesystem>

namespace mirelo::testing {

// Another current directory for the time of this object's life; the one before it comes back then.
class CurrentDirectory {
 public:
  explicit CurrentDirectory(const std::filesystem::path& path) { std::filesystem::current_path(path); }
  ~CurrentDirectory() { std::filesystem::current_path(before_); }
  CurrentDirectory(const CurrentDirectory&) = delete;
  CurrentDirectory& operator=(const CurrentDirectory&) = delete;

 private:
  const std::filesystem::path before_ = std::filesystem::current_path();
};

}  // namespace mirelo::testing
