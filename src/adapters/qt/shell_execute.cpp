#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>

#include "adapters/qt/qt_desktop.h"
#include "terminal/writing_signals.h"

namespace mirelo::qt {

namespace {

constexpr const char* kOpener = "xdg-open";

// In the child: makes a grandchild that nobody needs to wait for, and has it run the opener. When that fails,
// the parent reads the error's number.
[[noreturn]] void RunOpener(const char* file, int report) {
  if (::fork() != 0) ::_exit(0);
  ::setsid();
  // Signals that this program ignores or holds back are its own affair.
  terminal::RestoreWritingSignals();
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::execlp(kOpener, kOpener, file, static_cast<char*>(nullptr));
  const int error = errno;
  (void)!::write(report, &error, sizeof error);
  ::_exit(127);
}

int StartOpener(const std::string& file) {
  std::array<int, 2> report{};
  if (::pipe2(report.data(), O_CLOEXEC) != 0) return host::Desktop::kShellOutOfMemory;
  const pid_t child = ::fork();
  if (child == 0) RunOpener(file.c_str(), report[1]);
  ::close(report[1]);
  int error = 0;
  // Ends when the opener runs: the pipe closes then.
  const bool failed = child > 0 && ::read(report[0], &error, sizeof error) == sizeof error;
  ::close(report[0]);
  if (child < 0) return host::Desktop::kShellOutOfMemory;
  ::waitpid(child, nullptr, 0);
  return failed ? host::Desktop::kShellNoProgram : host::Desktop::kShellStarted;
}

}  // namespace

// The name reaches the opener as one argument and passes through no command line. It is never an option.
int QtDesktop::ShellExecuteA(const std::string& verb, const std::string& file) {
  if (verb != "open" || file.empty()) return kShellNoProgram;
  return StartOpener(file.front() == '-' ? "./" + file : file);
}

}  // namespace mirelo::qt
