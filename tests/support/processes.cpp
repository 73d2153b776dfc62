#include "support/processes.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace mirelo::testing {

namespace {

// The parent stands behind the state, and both behind the name, which may hold anything.
pid_t ParentOf(const std::filesystem::path& process) {
  std::ifstream in(process / "stat");
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  const std::size_t name_end = text.rfind(')');
  if (name_end == std::string::npos || name_end + 4 >= text.size()) return -1;
  pid_t parent = -1;
  std::from_chars(text.data() + name_end + 4, text.data() + text.size(), parent);
  return parent;
}

}  // namespace

std::vector<pid_t> ChildrenOf(pid_t process) {
  std::vector<pid_t> children;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
    const std::string name = entry.path().filename().string();
    pid_t number = -1;
    const auto end = std::from_chars(name.data(), name.data() + name.size(), number);
    if (end.ec == std::errc() && end.ptr == name.data() + name.size() && ParentOf(entry.path()) == process)
      children.push_back(number);
  }
  return children;
}

}  // namespace mirelo::testing
