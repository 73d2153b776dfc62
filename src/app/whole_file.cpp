#include "app/whole_file.h"

#include <fcntl.h>
#include <sys/file.h>
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

// How a file is called while it is made.
constexpr std::string_view kHiddenName = ".";
constexpr std::string_view kFreeLetters = "XXXXXX";
constexpr std::string_view kNewFile = ".mirelo-export";
constexpr int kTriesOfNames = 100;

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
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
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

bool IsNewFile(const std::string& name) {
  return name.starts_with(kHiddenName) && name.ends_with(kNewFile) &&
         name.size() == kHiddenName.size() + kFreeLetters.size() + kNewFile.size();
}

// One whose lock nobody has is of a process that was killed. Where the file system knows no locks, it stays.
void RemoveDead(const fs::path& file) {
  const int descriptor = ::open(file.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat status {};
  const bool is_left = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                       ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
  if (is_left) ::unlink(file.c_str());
  ::close(descriptor);
}

void RemoveAllDead(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    if (IsNewFile(entry->path().filename().string())) RemoveDead(entry->path());
  }
}

// Whether the lock came before somebody who removes what is left: that one has had it for a moment then.
bool LockStanding(int descriptor) {
  static_cast<void>(::flock(descriptor, LOCK_EX));
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && status.st_nlink > 0;
}

// A new file in this folder, locked for as long as it is open; negative where it cannot be made.
int MakeNewFile(const fs::path& folder, std::string& path) {
  for (int tries = 0; tries < kTriesOfNames; ++tries) {
    path = folder / std::string(kHiddenName).append(kFreeLetters).append(kNewFile);
    const int descriptor = ::mkostemps(path.data(), static_cast<int>(kNewFile.size()), O_CLOEXEC);
    if (descriptor < 0 || LockStanding(descriptor)) return descriptor;
    ::close(descriptor);
  }
  errno = EBUSY;
  return -1;
}

// What the umask leaves of the mode of a usual file. It can only be read by setting another one.
mode_t UsualMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

// `old` is the file that is replaced, if there is one: the new one takes its owner, where this process may
// say so, and its mode. One that this process may not write is not replaced either.
void Replace(const fs::path& file, std::string_view text, const struct stat* old, NewFile mode) {
  if (old != nullptr && ::access(file.c_str(), W_OK) != 0) throw CannotWrite(file, errno);
  const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
  RemoveAllDead(folder);
  std::string beside;
  const int descriptor = MakeNewFile(folder, beside);
  bool good = descriptor >= 0;
  if (good && old != nullptr) {
    good = (::fchown(descriptor, old->st_uid, old->st_gid) == 0 || errno == EPERM) &&
           ::fchmod(descriptor, old->st_mode & kPermissions) == 0;
  } else if (good && mode == NewFile::kUsual) {
    good = ::fchmod(descriptor, UsualMode()) == 0;
  }
  good = good && WriteAll(descriptor, text) && ::fsync(descriptor) == 0;
  good = good && ::rename(beside.c_str(), file.c_str()) == 0;
  const int error = errno;
  if (!good && descriptor >= 0) ::unlink(beside.c_str());
  if (descriptor >= 0) ::close(descriptor);
  if (!good) throw CannotWrite(file, error);
  SyncFolder(folder);
}

}  // namespace

void WriteWhole(const fs::path& file, std::string_view text, NewFile mode) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return Replace(BehindLinks(file), text, nullptr, mode);
  if (S_ISDIR(status.st_mode)) throw CannotWrite(file, EISDIR);
  if (!S_ISREG(status.st_mode)) return WriteInto(file, text);
  Replace(BehindLinks(file), text, &status, mode);
}

}  // namespace mirelo::app
