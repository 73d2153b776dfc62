#include "adapters/workbook/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <system_error>

#include "adapters/proc/descriptor.h"
#include "adapters/workbook/companion_names.h"
#include "adapters/workbook/file_errors.h"
#include "adapters/workbook/file_hold.h"
#include "adapters/workbook/file_target.h"
#include "adapters/workbook/foreign_hold.h"
#include "adapters/workbook/rules.h"
#include "host/documents.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace fs = std::filesystem;

namespace {

constexpr int kTries = 100;  // for a name that is free
constexpr mode_t kNewFile = 0666;
constexpr mode_t kOwnersAlone = 0700;
constexpr mode_t kPermissions = 07777;

host::FileFailure CannotSave(const fs::path& file, int reason) {
  return FileError("Cannot save " + file.string(), reason);
}

host::FileFailure CannotOpen(const fs::path& file, int reason) {
  return FileError("Cannot open " + file.string(), reason);
}

// The old file, if there is one. Raises the error by which a file is not replaced.
std::optional<struct stat> OldFile(const fs::path& file) {
  if (const auto hold = ForeignHold(file))
    throw PermissionDenied("Cannot save " + file.string() + ": " + *hold);
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) {
    if (errno == ENOENT) return std::nullopt;
    throw CannotSave(file, errno);
  }
  if (::access(file.c_str(), W_OK) != 0) throw CannotSave(file, errno);
  return status;
}

void RequireUnchanged(const fs::path& file, const std::optional<FileStamp>& known) {
  if (!known) return;
  if (const FileStamp now(file); now.IsOfAFile() && now != *known)
    throw host::ChangedMeanwhile(
        PermissionDenied("Cannot save " + file.string() + ": another program has changed it"));
}

// A new file, in a folder of its own beside the one whose place it is to take, in which its makers may have
// what they need meanwhile. All of that is gone at the end.
class NewFile {
 public:
  explicit NewFile(const fs::path& target)
      : target_(target), workshop_(MakeWorkshop()), path_(workshop_ / target.filename()) {
    descriptor_ = proc::Descriptor(::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kNewFile));
    if (descriptor_.IsOpen()) return;
    const int reason = errno;
    RemoveWorkshop();
    throw CannotSave(target_, reason);
  }
  ~NewFile() { RemoveWorkshop(); }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  const fs::path& path() const { return path_; }

  void TakePermissionsFrom(const struct stat& old) const {
    // Another owner's file stays that owner's where this process may say so.
    if (::fchown(descriptor_.number(), old.st_uid, old.st_gid) != 0 && errno != EPERM) Fail();
    if (::fchmod(descriptor_.number(), old.st_mode & kPermissions) != 0) Fail();
  }

  // Where the stamp of what stands in that place is still `known`. The result is the new one.
  FileStamp PutInPlace(const std::optional<FileStamp>& known, const Placing& placing) {
    if (::fsync(descriptor_.number()) != 0) Fail();
    const FileStamp stamp(descriptor_);
    if (placing) placing(stamp);
    RequireUnchanged(target_, known);  // as late as can be: to write and to sync takes its time
    if (::rename(path_.c_str(), target_.c_str()) != 0) Fail();
    SyncFolder();
    return stamp;
  }

 private:
  // So that the new name outlives a loss of power. It stands by now, so nothing has failed where the folder
  // may be written but not read, or cannot be synced.
  void SyncFolder() const {
    const proc::Descriptor folder(::open(FolderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen()) ::fsync(folder.number());
  }
  fs::path MakeWorkshop() const {
    std::random_device random;
    for (int i = 0; i < kTries; ++i) {
      fs::path folder = FolderOf(target_) / WorkshopNameOf(target_.filename().string(), random());
      if (::mkdir(folder.c_str(), kOwnersAlone) == 0) return folder;
      if (errno != EEXIST) break;
    }
    Fail();
  }
  void RemoveWorkshop() const {
    std::error_code ignored;
    fs::remove_all(workshop_, ignored);
  }

  [[noreturn]] void Fail() const { throw CannotSave(target_, errno); }

  fs::path target_;
  fs::path workshop_;
  fs::path path_;
  proc::Descriptor descriptor_;
};

}  // namespace

std::vector<char> ReadWholeFile(const fs::path& file, std::uint64_t most) {
  const proc::Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!descriptor.IsOpen()) {
    if (errno == ENOENT)
      throw RuntimeError(Errors::FileNotFound().Number(), "File not found: " + file.string(), "Workbook");
    throw CannotOpen(file, errno);
  }
  struct stat status {};
  if (::fstat(descriptor.number(), &status) != 0) throw CannotOpen(file, errno);
  if (!S_ISREG(status.st_mode)) throw NoRegularFile("Cannot open " + file.string(), status.st_mode);
  if (static_cast<std::uint64_t>(status.st_size) > most)
    throw Refused("the file is larger than is safe to read");

  std::vector<char> bytes(static_cast<std::size_t>(status.st_size));
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t count = ::read(descriptor.number(), bytes.data() + filled, bytes.size() - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw CannotOpen(file, errno);
    if (count == 0) break;  // it has become shorter meanwhile
    filled += static_cast<std::size_t>(count);
  }
  bytes.resize(filled);
  return bytes;
}

void WriteWholeFile(const fs::path& file, const std::vector<char>& bytes) {
  const proc::Descriptor descriptor(::open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
  if (!descriptor.IsOpen()) throw CannotSave(file, errno);
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t count = ::write(descriptor.number(), bytes.data() + written, bytes.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw CannotSave(file, errno);
    written += static_cast<std::size_t>(count);
  }
}

FileStamp ReplaceFile(const fs::path& file, const std::function<void(const fs::path&)>& write,
                      const std::optional<FileStamp>& known, const Placing& placing) {
  const FileHold hold(file);
  RequireUnchanged(hold.target(), known);
  const std::optional<struct stat> old = OldFile(hold.target());
  NewFile fresh(hold.target());
  if (old) fresh.TakePermissionsFrom(*old);
  write(fresh.path());
  return fresh.PutInPlace(known, placing);
}

void RequireReplaceable(const fs::path& file) {
  const FileHold hold(file);
  OldFile(hold.target());
}

}  // namespace mirelo::workbook
