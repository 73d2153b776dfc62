#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace mirelo::app {

// How an office is started.
struct OfficeStart {
  std::filesystem::path program;
  std::vector<std::string> arguments;
  std::vector<std::string> variables;  // "NAME=value", beside or in place of this process's own
  std::optional<int> line;             // a descriptor that it keeps open, under the same number
  std::filesystem::path output;        // what it prints goes to the end of this file; empty: where ours goes
};

// An office that runs beside this program, in a group of its own: Ctrl-C in the terminal is this program's
// affair. It is killed at destruction where it still runs then.
class OfficeProcess {
 public:
  // Error 53 when it cannot be started.
  explicit OfficeProcess(const OfficeStart& start);
  ~OfficeProcess();
  OfficeProcess(const OfficeProcess&) = delete;
  OfficeProcess& operator=(const OfficeProcess&) = delete;

  // Its exit code, or 128 and the number of the signal that ended it; nothing while it runs.
  std::optional<int> ExitCode();
  // Ends it, with all that it has started, at once.
  void Kill();

 private:
  pid_t pid_ = -1;
  std::optional<int> exit_code_;
};

}  // namespace mirelo::app
