#pragma once

#include <cstdint>
#include <filesystem>

struct stat;

namespace mirelo::proc {
class Descriptor;
}

namespace mirelo::workbook {

// Tells whether a file has changed: another file in its place, or other contents, have another stamp. What is
// no file, or cannot be looked at, has the same stamp each time.
class FileStamp {
 public:
  FileStamp() = default;
  // Of the file as it is now, or of what a symbolic link leads to.
  explicit FileStamp(const std::filesystem::path& file);
  // Of an open file, whatever its name has become.
  explicit FileStamp(const proc::Descriptor& descriptor);

  bool IsOfAFile() const { return inode_ != 0; }

  friend bool operator==(const FileStamp&, const FileStamp&) = default;

 private:
  explicit FileStamp(const struct stat& status);

  std::uint64_t device_ = 0;
  std::uint64_t inode_ = 0;
  std::int64_t size_ = 0;
  std::int64_t seconds_ = 0;  // of the last change
  std::int64_t nanoseconds_ = 0;
};

}  // namespace mirelo::workbook
