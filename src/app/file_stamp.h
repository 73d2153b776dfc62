#pragma once

#include <cstdint>
#include <filesystem>

namespace mirelo::app {

// What a file is known by: another one in its place, or other contents, have another stamp. That of what is
// no file, or cannot be looked at, is the same each time.
class FileStamp {
 public:
  FileStamp() = default;
  // Of the file as it is now, or of what a symbolic link leads to.
  explicit FileStamp(const std::filesystem::path& file);

  bool IsOfAFile() const { return inode_ != 0; }

  friend bool operator==(const FileStamp&, const FileStamp&) = default;

 private:
  std::uint64_t device_ = 0;
  std::uint64_t inode_ = 0;
  std::int64_t size_ = 0;
  std::int64_t seconds_ = 0;  // of the last change
  std::int64_t nanoseconds_ = 0;
};

}  // namespace mirelo::app
