#include "adapters/sodium/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <thread>

#include "adapters/proc/lock_holder.h"
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

// The error's number, EWOULDBLOCK when it was not free in that time; 0 when it is locked. The system can wait
// for such a lock for ever only.
int Lock(int descriptor, std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds kPause(2);
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() >= deadline) return errno;
    std::this_thread::sleep_for(kPause);
  }
  return 0;
}

}  // namespace

FolderLock::FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds patience) {
  Make(folder);
  descriptor_ = proc::Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!descriptor_.IsOpen()) FailAt("open", folder, errno);
  const int error = Lock(descriptor_.number(), patience);
  if (error == 0) return;
  if (error != EWOULDBLOCK) FailAt("lock", folder, error);
  throw RuntimeError(
      75, "The folder " + folder.string() + " is locked by " + proc::LockHolder({{.file = folder}}));
}

}  // namespace mirelo::sodium
