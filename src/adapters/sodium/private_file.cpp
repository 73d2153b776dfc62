#include "adapters/sodium/private_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

#include "automation/runtime_error.h"

namespace mirelo::sodium {

namespace {

[[noreturn]] void Fail(const std::string& what, const std::filesystem::path& file, int error) {
  throw RuntimeError(75, "cannot " + what + " " + file.string() + ": " + std::strerror(error));
}

void MakeFolder(const std::filesystem::path& folder) {
  if (std::filesystem::is_directory(folder)) return;
  if (folder.has_parent_path() && folder != folder.parent_path()) MakeFolder(folder.parent_path());
  if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) Fail("make the folder", folder, errno);
}

bool WriteAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const auto count = ::write(descriptor, content.data(), content.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(count));
  }
  return ::fsync(descriptor) == 0;
}

}  // namespace

std::optional<std::string> ReadPrivateFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
    Fail("read", file, errno);
  }
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

void WritePrivateFile(const std::filesystem::path& file, const std::string& content) {
  MakeFolder(file.parent_path());
  std::string beside = file.string() + ".XXXXXX";
  const int descriptor = ::mkstemp(beside.data());  // mode 0600 from the start
  if (descriptor < 0) Fail("write", file, errno);
  bool good = WriteAll(descriptor, content);
  int error = errno;
  ::close(descriptor);
  if (good && ::rename(beside.c_str(), file.c_str()) != 0) {
    good = false;
    error = errno;
  }
  if (good) return;
  ::unlink(beside.c_str());
  Fail("write", file, error);
}

void RemovePrivateFile(const std::filesystem::path& file) {
  if (::unlink(file.c_str()) != 0 && errno != ENOENT) Fail("remove", file, errno);
}

}  // namespace mirelo::sodium
