#include "support/processes.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace mirelo::testing {

namespace {

const std::filesystem::path kProcesses = "/proc";

struct Status {
  char state = '?';
  pid_t parent = -1;
};

// The parent stands behind the state, and both behind the name, which may hold anything.
Status StatusOf(const std::filesystem::path& process) {
  std::ifstream in(process / "stat");
  std::string text;
  std::getline(in, text, '\0');  // it may be gone before it is read
  const std::size_t name_end = text.rfind(')');
  if (name_end == std::string::npos || name_end + 4 >= text.size()) return {};
  Status status{.state = text[name_end + 2]};
  std::from_chars(text.data() + name_end + 4, text.data() + text.size(), status.parent);
  return status;
}

}  // namespace

std::vector<pid_t> ChildrenOf(pid_t process) {
  std::vector<pid_t> children;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(kProcesses, error)) {
    const std::string name = entry.path().filename().string();
    pid_t number = -1;
    const auto end = std::from_chars(name.data(), name.data() + name.size(), number);
    if (end.ec == std::errc() && end.ptr == name.data() + name.size() &&
        StatusOf(entry.path()).parent == process)
      children.push_back(number);
  }
  return children;
}

bool IsStopped(pid_t process) { return StatusOf(kProcesses / std::to_string(process)).state == 'T'; }

}  // namespace mirelo::testing
