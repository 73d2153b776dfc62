#include "app/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <system_error>
#include <thread>
#include <utility>

#include "automation/runtime_error.h"
#include "terminal/writing_signals.h"

namespace mirelo::app {

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void ThrowNotStarted(const std::filesystem::path& program, int error) {
  throw RuntimeError(53, "Cannot start " + program.string() + ": " + std::strerror(error));
}

// Signals that this program ignores or holds back are its own affair.
void SetUsualSignals(posix_spawnattr_t& attributes) {
  sigset_t signals;
  sigemptyset(&signals);
  ::posix_spawnattr_setsigmask(&attributes, &signals);
  for (const int signal : terminal::kWritingSignals) sigaddset(&signals, signal);
  ::posix_spawnattr_setsigdefault(&attributes, &signals);
  ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

std::filesystem::path& FolderElsewhere() {
  static std::filesystem::path folder;
  return folder;
}

}  // namespace

ChildProcess::ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
  std::array<int, 2> pipe_ends{};
  if (::pipe2(pipe_ends.data(), O_CLOEXEC) != 0) ThrowNotStarted(program, errno);

  std::vector<std::string> words{program.string()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (auto& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, pipe_ends[1], STDOUT_FILENO);
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  SetUsualSignals(attributes);
  const int error = ::posix_spawn(&pid_, program.c_str(), &actions, &attributes, argv.data(), environ);
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&actions);
  ::close(pipe_ends[1]);
  output_ = pipe_ends[0];
  if (error != 0) {
    ::close(output_);
    ThrowNotStarted(program, error);
  }
}

ChildProcess::~ChildProcess() {
  Stop();
  ::close(output_);
}

std::optional<std::string> ChildProcess::ReadLine(std::chrono::milliseconds patience) {
  const auto deadline = Clock::now() + patience;
  for (bool is_last_look = false;;) {
    if (const auto end = buffered_.find('\n'); end != std::string::npos) {
      std::string line = buffered_.substr(0, end);
      buffered_.erase(0, end + 1);
      return line;
    }
    if (is_last_look) return std::nullopt;
    const auto left = std::max<std::int64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count(), 0);
    is_last_look = left == 0;
    pollfd watched{output_, POLLIN, 0};
    const int ready = ::poll(&watched, 1, static_cast<int>(left));
    if (ready < 0 && errno == EINTR) continue;
    if (ready <= 0) return std::nullopt;
    std::array<char, 4096> bytes;
    const auto count = ::read(output_, bytes.data(), bytes.size());
    if (count <= 0) return std::nullopt;
    buffered_.append(bytes.data(), static_cast<std::size_t>(count));
  }
}

bool ChildProcess::IsRunning() {
  if (pid_ < 0) return false;
  if (::waitpid(pid_, &status_, WNOHANG) == 0) return true;
  pid_ = -1;
  return false;
}

void ChildProcess::Signal(int signal) {
  if (IsRunning()) ::kill(pid_, signal);
}

int ChildProcess::Wait(std::chrono::milliseconds patience) {
  for (const auto deadline = Clock::now() + patience; IsRunning();) {
    if (Clock::now() > deadline) return -1;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return WIFEXITED(status_) ? WEXITSTATUS(status_) : 128 + WTERMSIG(status_);
}

void ChildProcess::Stop() {
  if (!IsRunning()) return;
  ::kill(pid_, SIGTERM);
  for (const auto deadline = Clock::now() + std::chrono::seconds(2); IsRunning();) {
    if (Clock::now() > deadline) {
      ::kill(pid_, SIGKILL);
      ::waitpid(pid_, nullptr, 0);
      pid_ = -1;
      return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

std::filesystem::path ProgramFolder() {
  if (!FolderElsewhere().empty()) return FolderElsewhere();
  return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

void SetProgramFolder(std::filesystem::path folder) { FolderElsewhere() = std::move(folder); }

}  // namespace mirelo::app
