#include "adapters/sodium/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "automation/runtime_error.h"

namespace mirelo::sodium {

namespace {

[[noreturn]] void FailAt(const std::string& what, const std::filesystem::path& folder, int error) {
  throw RuntimeError(75, "cannot " + what + " the folder " + folder.string() + ": " + std::strerror(error));
}

void Make(const std::filesystem::path& folder) {
  if (std::filesystem::is_directory(folder)) return;
  if (folder.has_parent_path() && folder != folder.parent_path()) Make(folder.parent_path());
  if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) FailAt("make", folder, errno);
}

}  // namespace

FolderLock::FolderLock(const std::filesystem::path& folder) {
  Make(folder);
  descriptor_ = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor_ < 0) FailAt("open", folder, errno);
  while (::flock(descriptor_, LOCK_EX) != 0) {
    if (errno == EINTR) continue;
    const int error = errno;
    ::close(descriptor_);
    FailAt("lock", folder, error);
  }
}

FolderLock::~FolderLock() { ::close(descriptor_); }

}  // namespace mirelo::sodium
