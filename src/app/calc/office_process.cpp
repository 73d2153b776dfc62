#include "app/calc/office_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <string_view>

#include "automation/runtime_error.h"
#include "terminal/stop_signals.h"
#include "terminal/writing_signals.h"

namespace mirelo::app {

namespace {

constexpr int kStandardStreams[] = {STDOUT_FILENO, STDERR_FILENO};

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> Environment(const std::vector<std::string>& others) {
  std::vector<std::string> all = others;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string_view text = *variable;
    const std::string_view name = text.substr(0, text.find('=') + 1);
    if (std::ranges::none_of(others, [&](const std::string& other) { return other.starts_with(name); }))
      all.emplace_back(text);
  }
  return all;
}

// Of a terminal, and of whoever ends programs.
constexpr int kSignalsOfPeople[] = {SIGINT, SIGTERM, SIGHUP, SIGTSTP, SIGWINCH};

// Signals that this program ignores or holds back are its own affair.
void Prepare(posix_spawnattr_t& attributes, bool at_terminal) {
  sigset_t signals;
  sigemptyset(&signals);
  if (at_terminal) {
    for (const int signal : kSignalsOfPeople) sigaddset(&signals, signal);
  }
  ::posix_spawnattr_setsigmask(&attributes, &signals);
  sigemptyset(&signals);
  for (const int signal : terminal::kWritingSignals) sigaddset(&signals, signal);
  ::posix_spawnattr_setsigdefault(&attributes, &signals);
  ::posix_spawnattr_setpgroup(&attributes, 0);
  ::posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
}

// Whoever is not in the foreground is stopped for changing that, unless it holds the signal back.
void GiveTerminalTo(pid_t group) {
  sigset_t stop;
  sigset_t before;
  sigemptyset(&stop);
  sigaddset(&stop, SIGTTOU);
  ::sigprocmask(SIG_BLOCK, &stop, &before);
  ::tcsetpgrp(STDOUT_FILENO, group);
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace

// What a script has started in the background is in the script's group, and only looks as if it were in the
// foreground.
ForegroundGroup::ForegroundGroup(pid_t group)
    : is_given_(::isatty(STDOUT_FILENO) != 0 && ::tcgetpgrp(STDOUT_FILENO) == ::getpgrp() &&
                !terminal::IsIgnored(SIGINT)) {
  if (is_given_) GiveTerminalTo(group);
}

ForegroundGroup::~ForegroundGroup() {
  if (is_given_) GiveTerminalTo(::getpgrp());
}

OfficeProcess::OfficeProcess(const OfficeStart& start) {
  std::vector<std::string> words{start.program.string()};
  words.insert(words.end(), start.arguments.begin(), start.arguments.end());
  std::vector<std::string> variables = Environment(start.variables);

  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  if (!start.at_terminal)
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  for (const int kept : start.descriptors) ::posix_spawn_file_actions_adddup2(&actions, kept, kept);
  for (const int stream : kStandardStreams) {
    if (start.output.empty()) continue;
    ::posix_spawn_file_actions_addopen(&actions, stream, start.output.c_str(), O_WRONLY | O_CREAT | O_APPEND,
                                       0600);
  }
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  Prepare(attributes, start.at_terminal);
  const int error = ::posix_spawn(&pid_, start.program.c_str(), &actions, &attributes, Pointers(words).data(),
                                  Pointers(variables).data());
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&actions);
  if (error != 0)
    throw RuntimeError(53, "Cannot start " + start.program.string() + ": " + std::strerror(error));
  if (start.at_terminal) foreground_.emplace(pid_);
}

OfficeProcess::~OfficeProcess() { Kill(); }

std::optional<int> OfficeProcess::ExitCode() {
  int status = 0;
  if (!exit_code_ && ::waitpid(pid_, &status, WNOHANG) == pid_)
    exit_code_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return exit_code_;
}

void OfficeProcess::Kill() {
  if (ExitCode()) return;
  ::kill(-pid_, SIGKILL);  // what it has started as well
  int status = 0;
  ::waitpid(pid_, &status, 0);
  exit_code_ = 128 + SIGKILL;
}

void OfficeProcess::Signal(int signal) {
  if (!ExitCode()) ::kill(pid_, signal);
}

}  // namespace mirelo::app
