#include "adapters/workbook/file_stamp.h"

#include <sys/stat.h>

#include "adapters/proc/descriptor.h"

namespace mirelo::workbook {

FileStamp::FileStamp(const std::filesystem::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) == 0) *this = FileStamp(status);
}

FileStamp::FileStamp(const proc::Descriptor& descriptor) {
  struct stat status {};
  if (::fstat(descriptor.number(), &status) == 0) *this = FileStamp(status);
}

FileStamp::FileStamp(const struct stat& status) {
  if (!S_ISREG(status.st_mode)) return;
  device_ = status.st_dev;
  inode_ = status.st_ino;
  size_ = status.st_size;
  seconds_ = status.st_mtim.tv_sec;
  nanoseconds_ = status.st_mtim.tv_nsec;
}

}  // namespace mirelo::workbook
