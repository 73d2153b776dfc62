#include "app/terminal_program.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "support/built_program.h"

namespace mirelo::testing {

ProgramResult RunMireloInTerminal(const std::filesystem::path& folder,
                                  const std::vector<std::string>& arguments, int columns,
                                  const std::map<std::string, std::string>& environment) {
  std::vector<std::string> words{BuiltProgram("mirelo")};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (auto& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  winsize size{};
  size.ws_row = 24;
  size.ws_col = static_cast<unsigned short>(columns);
  int terminal = -1;
  const pid_t pid = ::forkpty(&terminal, nullptr, nullptr, &size);
  if (pid < 0) throw std::runtime_error("no terminal");
  if (pid == 0) {
    ::unsetenv("NO_COLOR");
    ::unsetenv("COLORTERM");
    ::setenv("TERM", "xterm-256color", 1);
    for (const auto& [name, value] : environment) ::setenv(name.c_str(), value.c_str(), 1);
    if (::chdir(folder.c_str()) != 0) ::_exit(126);
    ::execv(argv[0], argv.data());
    ::_exit(127);
  }
  ProgramResult result;
  char buffer[4096];
  // The read fails once the program has gone and all is read.
  for (ssize_t count = 0; (count = ::read(terminal, buffer, sizeof buffer)) > 0;) {
    result.out.append(buffer, static_cast<std::size_t>(count));
  }
  ::close(terminal);
  int status = 0;
  ::waitpid(pid, &status, 0);
  result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  result.exit_code = result.signal == 0 ? WEXITSTATUS(status) : 128 + result.signal;
  std::erase(result.out, '\r');
  return result;
}

}  // namespace mirelo::testing
