#include "quotetracker/started_program.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "support/built_program.h"

namespace mirelo::quotetracker {
namespace {

constexpr int kPatience = 10'000;  // milliseconds

struct Pipe {
  Pipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
      throw std::system_error(errno, std::generic_category(), "pipe2");
    reading = ends[0];
    writing = ends[1];
  }
  int reading = -1;
  int writing = -1;
};

pid_t Spawn(const std::vector<std::string>& arguments, int output, int errors) {
  const std::string program = testing::BuiltProgram("quotetracker");
  std::vector<char*> values{const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments) values.push_back(const_cast<char*>(argument.c_str()));
  values.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
  pid_t process = -1;
  const int error = ::posix_spawn(&process, program.c_str(), &actions, nullptr, values.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  if (error != 0) throw std::system_error(error, std::generic_category(), program);
  return process;
}

// The bytes that one read gives; empty at the end.
std::string ReadSome(int descriptor, std::size_t most) {
  pollfd ready{descriptor, POLLIN, 0};
  if (::poll(&ready, 1, kPatience) <= 0) throw std::runtime_error("the program said nothing in time");
  std::string bytes(most, '\0');
  const auto count = ::read(descriptor, bytes.data(), bytes.size());
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

}  // namespace

StartedProgram::StartedProgram(const std::vector<std::string>& arguments) {
  const Pipe output;
  const Pipe errors;
  output_ = output.reading;
  errors_ = errors.reading;
  process_ = Spawn(arguments, output.writing, errors.writing);
  ::close(output.writing);
  ::close(errors.writing);
}

StartedProgram::StartedProgram(StartedProgram&& other) noexcept
    : process_(std::exchange(other.process_, -1)),
      output_(std::exchange(other.output_, -1)),
      errors_(std::exchange(other.errors_, -1)) {}

StartedProgram::~StartedProgram() {
  if (process_ > 0) {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  if (output_ >= 0) ::close(output_);
  if (errors_ >= 0) ::close(errors_);
}

std::string StartedProgram::ReadLine() {
  std::string line;
  for (;;) {
    const std::string next = ReadSome(output_, 1);
    if (next.empty() || next == "\n") return line;
    line += next;
  }
}

void StartedProgram::Signal(int signal) const { ::kill(process_, signal); }

int StartedProgram::ExitCode() {
  ReadAll(output_);
  int status = 0;
  ::waitpid(std::exchange(process_, -1), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::uint16_t StartedProgram::PortOf(const std::string& line) {
  return static_cast<std::uint16_t>(std::stoi(line.substr(line.rfind(' ') + 1)));
}

int StartedProgram::StartBelowAParentThatLeaves(const std::vector<std::string>& arguments) {
  const Pipe output;
  const pid_t parent = ::fork();
  if (parent < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (parent == 0) {
    Spawn(arguments, output.writing, STDERR_FILENO);
    pollfd said{output.reading, POLLIN, 0};
    ::poll(&said, 1, kPatience);
    ::_exit(0);
  }
  ::close(output.writing);
  ::waitpid(parent, nullptr, 0);
  return output.reading;
}

std::string StartedProgram::ReadAll(int descriptor) {
  std::string all;
  for (std::string some = ReadSome(descriptor, 4096); !some.empty(); some = ReadSome(descriptor, 4096))
    all += some;
  return all;
}

}  // namespace mirelo::quotetracker
