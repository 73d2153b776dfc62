#include "adapters/workbook/lock_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <string_view>
#include <thread>
#include <utility>

#include "adapters/workbook/companion_names.h"
#include "adapters/workbook/file_errors.h"

namespace mirelo::workbook {

namespace fs = std::filesystem;

namespace {

constexpr mode_t kForAllToSee = 0644;
constexpr int kFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;

// Somebody who looks for dead processes, or saves something small, has it for a moment.
constexpr int kLockTries = 10;
constexpr std::chrono::milliseconds kPause{10};

proc::Descriptor OpenOrMake(const fs::path& lock) {
  proc::Descriptor own(::open(lock.c_str(), O_RDWR | O_CREAT | kFlags, kForAllToSee));
  if (own.IsOpen() || errno != EACCES) return own;
  proc::Descriptor of_another_user(::open(lock.c_str(), O_RDONLY | kFlags));
  if (!of_another_user.IsOpen()) errno = EACCES;
  return of_another_user;
}

bool IsOf(const proc::Descriptor& descriptor, const fs::path& path) {
  struct stat open {};
  struct stat standing {};
  return ::fstat(descriptor.number(), &open) == 0 && ::lstat(path.c_str(), &standing) == 0 &&
         open.st_dev == standing.st_dev && open.st_ino == standing.st_ino;
}

bool IsWritable(const proc::Descriptor& descriptor) {
  return (::fcntl(descriptor.number(), F_GETFL) & O_ACCMODE) == O_RDWR;
}

bool HasNoLocks(int reason) {
  return reason == ENOLCK || reason == EOPNOTSUPP || reason == ENOSYS || reason == EINVAL;
}

// On a full disk the lock is as good without it.
void WriteProcess(const proc::Descriptor& descriptor) {
  const std::string process = std::to_string(::getpid());
  if (::ftruncate(descriptor.number(), 0) != 0) return;
  static_cast<void>(::pwrite(descriptor.number(), process.data(), process.size(), 0));
}

// " (process 1234)", where that is known.
std::string ProcessIn(const proc::Descriptor& descriptor) {
  std::array<char, 16> text;
  const ssize_t count = ::pread(descriptor.number(), text.data(), text.size(), 0);
  const std::string_view process(text.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
  if (process.empty() || process.find_first_not_of("0123456789") != std::string_view::npos) return "";
  return std::string(" (process ").append(process).append(")");
}

RuntimeError Held(const fs::path& target, const proc::Descriptor& descriptor) {
  return PermissionDenied("Cannot save " + target.string() + ": another Mirelo works on it" +
                          ProcessIn(descriptor) + "; end that one first, or take another file");
}

RuntimeError OfAnotherUser(const fs::path& target, const fs::path& lock) {
  return PermissionDenied("Cannot save " + target.string() + ": its lock " + lock.string() +
                          " is another user's; if no Mirelo works on it, delete that");
}

RuntimeError ComesAndGoes(const fs::path& target, const fs::path& lock) {
  return PermissionDenied("Cannot save " + target.string() + ": its lock " + lock.string() +
                          " cannot be kept, as it comes and goes");
}

}  // namespace

LockFile::LockFile(const fs::path& target)
    : target_(target),
      path_(target.parent_path() / LockNameOf(target.filename().string())),
      descriptor_(Take()) {}

LockFile::~LockFile() {
  if (IsLocked() && IsStanding()) ::unlink(path_.c_str());
}

bool LockFile::IsStanding() const { return !IsLocked() || IsOf(descriptor_, path_); }

void LockFile::TakeAgain() {
  if (!IsStanding()) descriptor_ = Take();
}

proc::Descriptor LockFile::Take() const {
  const auto fail = [&](int reason) { return FileError("Cannot save " + target_.string(), reason); };
  for (int tries = 1;; ++tries) {
    proc::Descriptor descriptor = OpenOrMake(path_);
    if (!descriptor.IsOpen()) throw fail(errno);
    const bool was_last = tries == kLockTries;
    if (::flock(descriptor.number(), LOCK_EX | LOCK_NB) == 0) {
      const bool stands = IsOf(descriptor, path_);  // else its holder has removed it after it was opened here
      const bool is_left =
          stands && !IsWritable(descriptor) && ::unlink(path_.c_str()) == 0;  // by another user
      if (stands && !is_left) {
        WriteProcess(descriptor);
        return descriptor;
      }
      if (was_last) throw ComesAndGoes(target_, path_);
    } else {
      const int reason = errno;
      if (HasNoLocks(reason)) {
        ::unlink(path_.c_str());
        return proc::Descriptor();
      }
      if (reason == EBADF && !IsWritable(descriptor)) throw OfAnotherUser(target_, path_);
      if (reason != EWOULDBLOCK) throw fail(reason);
      if (was_last) throw Held(target_, descriptor);
    }
    std::this_thread::sleep_for(kPause);
  }
}

proc::Descriptor OpenToLock(const fs::path& file) {
  constexpr int kFlagsOfAll = O_CLOEXEC | O_NONBLOCK;
  proc::Descriptor for_writing(::open(file.c_str(), O_RDWR | kFlagsOfAll));
  return for_writing.IsOpen() ? std::move(for_writing)
                              : proc::Descriptor(::open(file.c_str(), O_RDONLY | kFlagsOfAll));
}

proc::Descriptor DeadLock(const fs::path& lock) {
  proc::Descriptor descriptor = OpenToLock(lock);
  const bool is_dead =
      descriptor.IsOpen() && ::flock(descriptor.number(), LOCK_EX | LOCK_NB) == 0 && IsOf(descriptor, lock);
  return is_dead ? std::move(descriptor) : proc::Descriptor();
}

}  // namespace mirelo::workbook
