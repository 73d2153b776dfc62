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

#include "adapters/workbook/errors.h"
#include "adapters/workbook/foreign_hold.h"

namespace mirelo::workbook {

namespace {

constexpr int kTries = 100;  // for a name that is free
constexpr mode_t kNewFile = 0666;
constexpr mode_t kPermissions = 07777;

RuntimeError CannotSave(const std::filesystem::path& file, int reason) {
  return FileError("Cannot save " + file.string(), reason);
}

RuntimeError CannotOpen(const std::filesystem::path& file, int reason) {
  return FileError("Cannot open " + file.string(), reason);
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }

 private:
  int number_;
};

std::filesystem::path FolderOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

// Where the bytes go: links are followed, so that they go on pointing at the file.
std::filesystem::path TargetOf(const std::filesystem::path& file) {
  std::error_code error;
  std::filesystem::path target = std::filesystem::weakly_canonical(file, error);
  if (error) throw CannotSave(file, error.value());
  return target;
}

// The old file, if there is one. Raises the error by which a file is not replaced.
std::optional<struct stat> OldFile(const std::filesystem::path& file) {
  if (const auto hold = ForeignHold(file))
    throw PermissionDenied("Cannot save " + file.string() + ": " + *hold);
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) {
    if (errno == ENOENT) return std::nullopt;
    throw CannotSave(file, errno);
  }
  if (S_ISDIR(status.st_mode)) throw CannotSave(file, EISDIR);
  if (!S_ISREG(status.st_mode)) throw CannotSave(file, EINVAL);
  if (::access(file.c_str(), W_OK) != 0) throw CannotSave(file, errno);
  return status;
}

// A new file beside another one. It is gone at the end unless it was put in that one's place.
class NewFile {
 public:
  explicit NewFile(const std::filesystem::path& target) : target_(target), descriptor_(Create()) {}
  ~NewFile() {
    if (!path_.empty()) ::unlink(path_.c_str());
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  const std::filesystem::path& path() const { return path_; }

  void TakePermissionsFrom(const struct stat& old) const {
    // Another owner's file stays that owner's where this process may say so.
    if (::fchown(descriptor_.number(), old.st_uid, old.st_gid) != 0 && errno != EPERM) Fail();
    if (::fchmod(descriptor_.number(), old.st_mode & kPermissions) != 0) Fail();
  }

  void PutInPlace() {
    if (::fsync(descriptor_.number()) != 0) Fail();
    if (::rename(path_.c_str(), target_.c_str()) != 0) Fail();
    path_.clear();
    const Descriptor folder(::open(FolderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.IsOpen() || (::fsync(folder.number()) != 0 && errno != EINVAL))
      Fail();  // EINVAL: it cannot be synced
  }

 private:
  int Create() {
    std::random_device random;
    for (int i = 0; i < kTries; ++i) {
      path_ = FolderOf(target_) /
              std::string(1, '.').append(target_.filename()).append(std::to_string(random())).append(".tmp");
      const int descriptor = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kNewFile);
      if (descriptor >= 0) return descriptor;
      if (errno != EEXIST) break;
    }
    path_.clear();
    Fail();
  }

  [[noreturn]] void Fail() const { throw CannotSave(target_, errno); }

  std::filesystem::path target_;
  std::filesystem::path path_;
  Descriptor descriptor_;
};

}  // namespace

std::vector<char> ReadWholeFile(const std::filesystem::path& file, std::uint64_t most) {
  const Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!descriptor.IsOpen()) {
    if (errno == ENOENT)
      throw RuntimeError(Errors::FileNotFound().Number(), "File not found: " + file.string(), "Workbook");
    throw CannotOpen(file, errno);
  }
  struct stat status {};
  if (::fstat(descriptor.number(), &status) != 0) throw CannotOpen(file, errno);
  if (!S_ISREG(status.st_mode)) throw CannotOpen(file, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
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

void WriteWholeFile(const std::filesystem::path& file, const std::vector<char>& bytes) {
  const Descriptor descriptor(::open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
  if (!descriptor.IsOpen()) throw CannotSave(file, errno);
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t count = ::write(descriptor.number(), bytes.data() + written, bytes.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw CannotSave(file, errno);
    written += static_cast<std::size_t>(count);
  }
}

void ReplaceFile(const std::filesystem::path& file,
                 const std::function<void(const std::filesystem::path&)>& write) {
  const std::filesystem::path target = TargetOf(file);
  const std::optional<struct stat> old = OldFile(target);
  NewFile fresh(target);
  if (old) fresh.TakePermissionsFrom(*old);
  write(fresh.path());
  fresh.PutInPlace();
}

void RequireReplaceable(const std::filesystem::path& file) {
  const std::filesystem::path target = TargetOf(file);
  OldFile(target);
  if (::access(FolderOf(target).c_str(), W_OK | X_OK) != 0) throw CannotSave(target, errno);
}

}  // namespace mirelo::workbook
