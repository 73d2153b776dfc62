#include "adapters/sodium/private_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "adapters/proc/descriptor.h"
#include "adapters/sodium/guarded_memory.h"
#include "automation/runtime_error.h"

namespace mirelo::sodium {

namespace {

// Name and secret of 4096 bytes each, sealed and written as text, take a sixth of that.
constexpr std::uintmax_t kLargest = 65536;

[[noreturn]] void Fail(const std::string& what, const std::filesystem::path& file, const std::string& why) {
  throw RuntimeError(75, "cannot " + what + " " + file.string() + ": " + why);
}

[[noreturn]] void Fail(const std::string& what, const std::filesystem::path& file, int error) {
  Fail(what, file, std::strerror(error));
}

// A file that is open for reading. Not there is no error. Opening does not wait: a pipe may have no writer.
class Reading {
 public:
  explicit Reading(const std::filesystem::path& file)
      : file_(file), descriptor_(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    if (!IsThere() && errno != ENOENT && errno != ENOTDIR) Fail("read", file_, errno);
  }

  bool IsThere() const { return descriptor_.IsOpen(); }

  std::size_t Size() const {
    struct stat status {};
    if (::fstat(descriptor_.number(), &status) != 0) Fail("read", file_, errno);
    if (!S_ISREG(status.st_mode)) Fail("read", file_, "it is no regular file");
    if (static_cast<std::uintmax_t>(status.st_size) > kLargest)
      Fail("read", file_, "it is larger than any credentials");
    return static_cast<std::size_t>(status.st_size);
  }

  void Fill(char* memory, std::size_t size) const {
    while (size > 0) {
      const auto count = ::read(descriptor_.number(), memory, size);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) Fail("read", file_, count < 0 ? errno : EIO);
      memory += count;
      size -= static_cast<std::size_t>(count);
    }
  }

 private:
  const std::filesystem::path& file_;
  proc::Descriptor descriptor_;
};

bool WriteAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const auto count = ::write(descriptor, content.data(), content.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(count));
  }
  return ::fsync(descriptor) == 0;
}

// What is on its way to being the file. One name for all writes, so that nothing is left by those that were
// killed but what the next one replaces.
std::filesystem::path Unfinished(const std::filesystem::path& file) { return file.string() + ".new"; }

void Remove(const std::filesystem::path& file) {
  if (::unlink(file.c_str()) != 0 && errno != ENOENT && errno != ENOTDIR) Fail("remove", file, errno);
}

// Puts the names of a folder on the disk. Some file systems do that by themselves and refuse to be asked.
void SyncFolder(const std::filesystem::path& folder) {
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  const bool good = ::fsync(descriptor) == 0 || errno == EINVAL;
  const int error = errno;
  ::close(descriptor);
  if (!good) Fail("write", folder, error);
}

}  // namespace

std::optional<std::string> ReadPrivateFile(const std::filesystem::path& file) {
  const Reading reading(file);
  if (!reading.IsThere()) return std::nullopt;
  std::string content(reading.Size(), '\0');
  reading.Fill(content.data(), content.size());
  return content;
}

std::optional<host::Secret> ReadSecretFile(const std::filesystem::path& file) {
  const Reading reading(file);
  if (!reading.IsThere()) return std::nullopt;
  const std::size_t size = reading.Size();
  host::Secret content = MakeGuarded(size);
  reading.Fill(content.data(), size);
  return content;
}

void WritePrivateFile(const std::filesystem::path& file, std::string_view content) {
  const std::filesystem::path unfinished = Unfinished(file);
  Remove(unfinished);
  const int descriptor = ::open(unfinished.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (descriptor < 0) Fail("write", file, errno);
  bool good = WriteAll(descriptor, content);
  int error = errno;
  ::close(descriptor);
  if (good && ::rename(unfinished.c_str(), file.c_str()) != 0) {
    good = false;
    error = errno;
  }
  if (good) return SyncFolder(file.parent_path());
  ::unlink(unfinished.c_str());
  Fail("write", file, error);
}

void RemovePrivateFile(const std::filesystem::path& file) {
  Remove(Unfinished(file));
  Remove(file);
}

}  // namespace mirelo::sodium
