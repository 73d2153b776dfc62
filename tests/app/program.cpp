#include "app/program.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace mirelo::testing {

namespace {

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

void Redirect(const std::filesystem::path& path, int flags, int descriptor) {
  const int file = ::open(path.c_str(), flags, 0600);
  ::dup2(file, descriptor);
  ::close(file);
}

}  // namespace

ProgramResult RunMirelo(const std::filesystem::path& folder, const std::vector<std::string>& arguments,
                        const std::string& input) {
  return RunProgram(std::filesystem::path(MIRELO_BIN_DIR) / "mirelo", folder, arguments, input);
}

ProgramResult RunProgram(const std::filesystem::path& program, const std::filesystem::path& folder,
                         const std::vector<std::string>& arguments, const std::string& input) {
  const auto home = folder / "home";
  std::filesystem::create_directories(home);
  const auto in = home / "in";
  const auto out = home / "out";
  const auto err = home / "err";
  std::ofstream(in, std::ios::binary) << input;

  std::vector<std::string> words{program.string()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (auto& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  const pid_t pid = ::fork();
  if (pid == 0) {
    ::setenv("HOME", home.c_str(), 1);
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("LC_ALL");
    ::unsetenv("LC_TIME");
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);  // root's right to write what nobody may
    if (::chdir(folder.c_str()) != 0) ::_exit(126);
    Redirect(in, O_RDONLY, STDIN_FILENO);
    Redirect(out, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    Redirect(err, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    ::execv(argv[0], argv.data());
    ::_exit(127);
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), ReadFile(out), ReadFile(err)};
}

}  // namespace mirelo::testing
