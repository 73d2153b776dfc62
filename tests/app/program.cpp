#include "app/program.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>

#include "support/built_program.h"

namespace mirelo::testing {

namespace {

const std::filesystem::path kMirelo = BuiltProgram("mirelo");

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

void Redirect(const std::filesystem::path& path, int flags, int descriptor) {
  const int file = ::open(path.c_str(), flags, 0600);
  ::dup2(file, descriptor);
  ::close(file);
}

// A pipe that nobody reads.
void RedirectToNobody(int descriptor) {
  int ends[2];
  if (::pipe(ends) != 0) ::_exit(126);
  ::close(ends[0]);
  ::dup2(ends[1], descriptor);
  ::close(ends[1]);
}

// `prepare` has the last word on the program's standard streams.
ProgramResult Run(const std::filesystem::path& program, const std::filesystem::path& folder,
                  const std::vector<std::string>& arguments, const std::string& input,
                  const std::function<void()>& prepare) {
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
    std::signal(SIGPIPE, SIG_DFL);
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);  // root's right to write what nobody may
    if (::chdir(folder.c_str()) != 0) ::_exit(126);
    Redirect(in, O_RDONLY, STDIN_FILENO);
    Redirect(out, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    Redirect(err, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    prepare();
    ::execv(argv[0], argv.data());
    ::_exit(127);
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  return {signal == 0 ? WEXITSTATUS(status) : 128 + signal, signal, ReadFile(out), ReadFile(err)};
}

}  // namespace

ProgramResult RunMirelo(const std::filesystem::path& folder, const std::vector<std::string>& arguments,
                        const std::string& input) {
  return Run(kMirelo, folder, arguments, input, [] {});
}

ProgramResult RunProgram(const std::filesystem::path& program, const std::filesystem::path& folder,
                         const std::vector<std::string>& arguments, const std::string& input) {
  return Run(program, folder, arguments, input, [] {});
}

ProgramResult RunMireloUnread(const std::filesystem::path& folder, const std::vector<std::string>& arguments,
                              bool errors_too) {
  return Run(kMirelo, folder, arguments, "", [=] {
    RedirectToNobody(STDOUT_FILENO);
    if (errors_too) RedirectToNobody(STDERR_FILENO);
  });
}

ProgramResult RunMireloWithin(int resource, std::uint64_t most, const std::filesystem::path& folder,
                              const std::vector<std::string>& arguments) {
  return Run(kMirelo, folder, arguments, "", [=] {
    std::signal(SIGXFSZ, SIG_DFL);
    const rlimit limit{most, most};
    const rlimit none{0, 0};
    if (::setrlimit(RLIMIT_CORE, &none) != 0 ||
        ::setrlimit(static_cast<__rlimit_resource_t>(resource), &limit) != 0)
      ::_exit(126);
  });
}

ProgramResult RunMireloOnFullDisk(const std::filesystem::path& folder,
                                  const std::vector<std::string>& arguments) {
  return Run(kMirelo, folder, arguments, "", [] { Redirect("/dev/full", O_WRONLY, STDOUT_FILENO); });
}

}  // namespace mirelo::testing
