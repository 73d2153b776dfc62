#include "adapters/workbook/xlsx/writer_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/workbook/errors.h"
#include "automation/runtime_error.h"

namespace mirelo::workbook {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr milliseconds kStep{100};  // of waiting
constexpr std::string_view kDone = "done";
constexpr char kBetween = '\n';  // the number, the source and the description of an error

[[noreturn]] void FailToStart(int reason) {
  if (reason == ENOMEM) throw Errors::OutOfMemory();
  throw Refused(std::string("The workbook cannot be written: no process can be started for it (") +
                std::strerror(reason) + ").");
}

// All of them, while it lives.
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~BlockedSignals() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
  sigset_t before_;
};

class Pipe {
 public:
  Pipe() {
    if (::pipe2(ends_.data(), O_CLOEXEC) != 0) FailToStart(errno);
  }
  ~Pipe() {
    ::close(ends_[0]);
    CloseWriting();
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  void CloseWriting() {
    if (ends_[1] >= 0) ::close(ends_[1]);
    ends_[1] = -1;
  }

  // Everything up to the end; nothing when that does not come in time.
  std::optional<std::string> Read(milliseconds patience) const {
    std::string text;
    std::array<char, 1024> piece;
    while (Await(patience)) {
      const ssize_t count = ::read(ends_[0], piece.data(), piece.size());
      if (count > 0) text.append(piece.data(), static_cast<std::size_t>(count));
      if (count == 0 || (count < 0 && errno != EINTR)) return text;
    }
    return std::nullopt;
  }
  void Write(std::string_view text) const {
    while (!text.empty()) {
      const ssize_t count = ::write(ends_[1], text.data(), text.size());
      if (count <= 0) return;  // nobody listens any more
      text.remove_prefix(static_cast<std::size_t>(count));
    }
  }

 private:
  // Whether there is something to read before `patience` is used up. It is used up by steps: a time in which
  // this process stands still itself, as one that a shell has stopped, counts for no more than one of them.
  bool Await(milliseconds& patience) const {
    while (patience > milliseconds(0)) {
      const milliseconds step = std::min(patience, kStep);
      const auto start = steady_clock::now();
      pollfd end{ends_[0], POLLIN, 0};
      if (::poll(&end, 1, static_cast<int>(step.count())) > 0) return true;
      patience -=
          std::clamp(std::chrono::ceil<milliseconds>(steady_clock::now() - start), milliseconds(1), step);
    }
    return false;
  }

  std::array<int, 2> ends_{-1, -1};
};

std::string ReportOf(const std::function<void()>& write) {
  try {
    write();
    return std::string(kDone);
  } catch (const std::exception&) {
    const RuntimeError error = CurrentError();
    return std::to_string(error.Number()) + kBetween + error.Source() + kBetween + error.Description();
  }
}

// Nothing may leave it: a second process would go on with the day. What fails to be reported ends the copy.
[[noreturn]] void Copy(pid_t original, const Pipe& report, const std::function<void()>& write) noexcept {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != original) ::_exit(1);  // it has gone meanwhile
  // The stream alone: the descriptor is also that of tools which watch over the memory.
  if (std::FILE* nowhere = std::fopen("/dev/null", "we")) stderr = nowhere;
  report.Write(ReportOf(write));
  ::_exit(0);
}

std::optional<RuntimeError> ErrorIn(std::string_view report) {
  const std::size_t source = report.find(kBetween) + 1;
  const std::size_t description = report.find(kBetween, source) + 1;
  if (source == 0 || description == 0) return std::nullopt;
  std::int32_t number = 0;
  std::from_chars(report.data(), report.data() + source - 1, number);
  return RuntimeError(number, std::string(report.substr(description)),
                      std::string(report.substr(source, description - source - 1)));
}

// The address sanitizer's allocator may be held by another thread when the process is copied, and then stands
// still in the copy for ever. The library of C sees to that itself.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
constexpr bool kIsSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kIsSanitized = false;
#endif

bool CanBeCopied() {
  return !kIsSanitized || std::distance(std::filesystem::directory_iterator("/proc/self/task"), {}) == 1;
}

// The copy, which this does not outlive.
class WriterProcess {
 public:
  WriterProcess(const Pipe& report, const std::function<void()>& write) {
    const pid_t original = ::getpid();
    const BlockedSignals blocked;
    copy_ = ::fork();
    if (copy_ == 0) Copy(original, report, write);
    if (copy_ < 0) FailToStart(errno);
  }
  ~WriterProcess() {
    if (copy_ < 0 || ::waitpid(copy_, nullptr, WNOHANG) != 0) return;
    ::kill(copy_, SIGKILL);
    Wait();
  }
  WriterProcess(const WriterProcess&) = delete;
  WriterProcess& operator=(const WriterProcess&) = delete;

  // Waits for its end, and tells of it.
  std::string End() {
    const std::optional<int> status = Wait();
    if (!status) return "no more is known";
    if (WIFSIGNALED(*status)) return std::string("signal ") + std::to_string(WTERMSIG(*status));
    return "exit code " + std::to_string(WEXITSTATUS(*status));
  }

 private:
  // Nothing where somebody else knows of its end already.
  std::optional<int> Wait() {
    const pid_t copy = std::exchange(copy_, -1);
    int status = 0;
    while (::waitpid(copy, &status, 0) < 0) {
      if (errno != EINTR) return std::nullopt;
    }
    return status;
  }

  pid_t copy_ = -1;
};

}  // namespace

void InWriterProcess(const std::function<void()>& write, milliseconds patience) {
  if (!CanBeCopied()) return write();
  Pipe pipe;
  WriterProcess process(pipe, write);
  pipe.CloseWriting();
  const std::optional<std::string> report = pipe.Read(patience);
  if (!report)
    throw Refused(
        "The workbook cannot be written: the file writer stood still and was ended. The disk may not "
        "answer.");
  const std::string end = process.End();
  if (*report == kDone) return;
  if (const auto error = ErrorIn(*report)) throw *error;
  throw Refused("The workbook cannot be written: the file writer broke off (" + end +
                "). Memory may be short.");
}

}  // namespace mirelo::workbook
