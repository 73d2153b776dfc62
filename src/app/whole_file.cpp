#include "app/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

#include "automation/runtime_error.h"

namespace mirelo::app {

namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;  // as the system's own limit
constexpr mode_t kPermissions = 07777;

bool WriteAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const auto count = ::write(descriptor, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

RuntimeError CannotWrite(const fs::path& file, int reason) {
  return RuntimeError(75, "cannot write " + file.string() + ": " + std::strerror(reason));
}

// Puts the names of a folder on the disk. What is said of it is not looked at: the file is whole in any case.
void SyncFolder(const fs::path& folder) {
  const int descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

// What a symbolic link leads to in the end, and any other file itself. Raises ELOOP's error for links that
// lead to one another.
fs::path BehindLinks(const fs::path& file) {
  fs::path target = file;
  for (int i = 0; i < kMostLinks; ++i) {
    std::error_code is_none;
    const fs::path next = fs::read_symlink(target, is_none);
    if (is_none) return target;
    target = target.parent_path() / next;
  }
  throw CannotWrite(file, ELOOP);
}

// A device, a pipe or a socket takes text where it stands; nothing can take its place.
void WriteInto(const fs::path& device, std::string_view text) {
  const int descriptor = ::open(device.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  const bool good = descriptor >= 0 && WriteAll(descriptor, text);
  const int error = errno;
  if (descriptor >= 0) ::close(descriptor);
  if (!good) throw CannotWrite(device, error);
}

// `old` is the file that is replaced, if there is one: the new one takes its owner, where this process may
// say so, and its mode.
void Replace(const fs::path& file, std::string_view text, const struct stat* old) {
  std::string beside = file.string() + ".XXXXXX";
  const int descriptor = ::mkstemp(beside.data());
  bool good = descriptor >= 0;
  if (good && old != nullptr) {
    good = (::fchown(descriptor, old->st_uid, old->st_gid) == 0 || errno == EPERM) &&
           ::fchmod(descriptor, old->st_mode & kPermissions) == 0;
  }
  good = good && WriteAll(descriptor, text) && ::fsync(descriptor) == 0;
  int error = errno;
  if (descriptor >= 0) ::close(descriptor);
  if (good && ::rename(beside.c_str(), file.c_str()) != 0) {
    good = false;
    error = errno;
  }
  if (good) return SyncFolder(file.parent_path());
  if (descriptor >= 0) ::unlink(beside.c_str());
  throw CannotWrite(file, error);
}

}  // namespace

void WriteWhole(const fs::path& file, std::string_view text) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return Replace(BehindLinks(file), text, nullptr);
  if (S_ISDIR(status.st_mode)) throw CannotWrite(file, EISDIR);
  if (!S_ISREG(status.st_mode)) return WriteInto(file, text);
  Replace(BehindLinks(file), text, &status);
}

}  // namespace mirelo::app
