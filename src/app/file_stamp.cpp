#include "app/file_stamp.h"

#include <sys/stat.h>

namespace mirelo::app {

FileStamp::FileStamp(const std::filesystem::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  device_ = status.st_dev;
  inode_ = status.st_ino;
  size_ = status.st_size;
  seconds_ = status.st_mtim.tv_sec;
  nanoseconds_ = status.st_mtim.tv_nsec;
}

}  // namespace mirelo::app
