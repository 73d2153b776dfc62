#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace mirelo::app {

// The terminal's foreground group is another one than this program's until the end.
class ForegroundGroup {
 public:
  // Where this program prints to its terminal and has it in the foreground; nothing is done otherwise.
  explicit ForegroundGroup(pid_t group);
  ~ForegroundGroup();
  ForegroundGroup(const ForegroundGroup&) = delete;
  ForegroundGroup& operator=(const ForegroundGroup&) = delete;

 private:
  bool is_given_ = false;
};

// How an office is started.
struct OfficeStart {
  std::filesystem::path program;
  std::vector<std::string> arguments;
  std::vector<std::string> variables;  // "NAME=value", beside or in place of this process's own
  std::vector<int> descriptors;        // that it keeps open, under the same numbers
  std::filesystem::path output;        // what it prints goes to the end of this file; empty: where ours goes
  // Whether it is to be at the terminal in place of this program, where that prints there: it gets the keys,
  // Ctrl-C among them. All its threads hold back the signals by which people end a program, until it asks for
  // them.
  bool at_terminal = false;
};

// An office that runs beside this program, in a group of its own: Ctrl-C in the terminal is this program's
// affair, unless the office is at the terminal. It is killed at destruction where it still runs then.
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
  // Sends it a signal; one that has ended gets none.
  void Signal(int signal);

 private:
  pid_t pid_ = -1;
  std::optional<int> exit_code_;
  std::optional<ForegroundGroup> foreground_;
};

}  // namespace mirelo::app
