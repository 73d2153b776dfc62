#include "app/whole_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "automation/runtime_error.h"

namespace mirelo::app {

namespace {

bool WriteAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const auto count = ::write(descriptor, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return ::fsync(descriptor) == 0;
}

}  // namespace

void WriteWhole(const std::filesystem::path& file, std::string_view text) {
  std::string beside = file.string() + ".XXXXXX";
  const int descriptor = ::mkstemp(beside.data());
  bool good = descriptor >= 0 && WriteAll(descriptor, text);
  int error = errno;
  if (descriptor >= 0) ::close(descriptor);
  if (good && ::rename(beside.c_str(), file.c_str()) != 0) {
    good = false;
    error = errno;
  }
  if (good) return;
  if (descriptor >= 0) ::unlink(beside.c_str());
  throw RuntimeError(75, "cannot write " + file.string() + ": " + std::strerror(error));
}

}  // namespace mirelo::app
