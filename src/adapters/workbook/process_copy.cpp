#include "adapters/workbook/process_copy.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <new>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/workbook/file_hold.h"
#include "adapters/workbook/rules.h"
#include "automation/runtime_error.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr milliseconds kStepOfWaiting{100};
constexpr std::chrono::microseconds kFirstStep{50};
constexpr std::chrono::microseconds kLastStep{10'000};
constexpr std::uint32_t kLongestMessage = 16U << 20;
constexpr std::size_t kHead =
    1 + sizeof(std::uint32_t);  // of a message: its kind, and the length of its text
constexpr char kAnswer = '.';
constexpr unsigned kFirstBehindStandardStreams = 3;

// In a copy: its line. A copy of the copy keeps it open, so that the line's end tells that all have gone.
int line_of_this_copy = -1;

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

std::pair<proc::Descriptor, proc::Descriptor> NewLine() {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) FailToStart(errno);
  return {proc::Descriptor(ends[0]), proc::Descriptor(ends[1])};
}

void SendAll(int line, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::send(line, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;  // nobody listens any more
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void CloseAllBut(std::vector<int> kept) {
  std::ranges::sort(kept);
  unsigned next = kFirstBehindStandardStreams;
  for (const int number : kept) {
    const auto keep = static_cast<unsigned>(number);
    if (number < 0 || keep < next) continue;
    if (keep > next) ::close_range(next, keep - 1, 0);
    next = keep + 1;
  }
  ::close_range(next, UINT_MAX, 0);
}

// Nothing may leave it: a second process would go on with the day.
[[noreturn]] void RunCopy(pid_t original, const ProcessCopy::Line& line,
                          const std::function<void(const ProcessCopy::Line&)>& work) noexcept {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != original) ::_exit(1);  // it has gone meanwhile
  std::vector<int> kept = FileHold::Descriptors();
  kept.insert(kept.end(), {line.descriptor(), std::exchange(line_of_this_copy, line.descriptor())});
  CloseAllBut(std::move(kept));
  // The stream alone: the descriptor is also that of tools which watch over the memory.
  if (std::FILE* nowhere = std::fopen("/dev/null", "we")) stderr = nowhere;
  work(line);
  ::_exit(0);
}

// Copies that could not be ended in time.
std::vector<pid_t> left_behind;

void LeaveBehind(pid_t copy) try {
  left_behind.push_back(copy);
} catch (const std::bad_alloc&) {  // its number stays taken until this process ends
}

// The system keeps the number of a process that has ended until somebody has asked for it.
void ForgetEnded() {
  std::erase_if(left_behind, [](pid_t copy) { return ::waitpid(copy, nullptr, WNOHANG) != 0; });
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

}  // namespace

void ProcessCopy::Line::Send(char kind, std::string_view text) const {
  text = text.substr(0, kLongestMessage);
  const auto length = static_cast<std::uint32_t>(text.size());
  std::array<char, kHead> head{kind};
  std::memcpy(head.data() + 1, &length, sizeof length);
  SendAll(descriptor(), {head.data(), head.size()});
  SendAll(descriptor(), text);
}

void ProcessCopy::Line::AwaitAnswer() const {
  char answer = 0;
  ssize_t count = 0;
  do count = ::recv(descriptor(), &answer, 1, 0);
  while (count < 0 && errno == EINTR);
  if (count <= 0) ::_exit(1);
}

ProcessCopy::ProcessCopy(const std::function<void(const Line&)>& work) {
  ForgetEnded();
  auto [own, others] = NewLine();
  line_ = std::move(own);
  const Line line(std::move(others));
  const pid_t original = ::getpid();
  const BlockedSignals blocked;
  copy_ = ::fork();
  if (copy_ == 0) RunCopy(original, line, work);
  if (copy_ < 0) FailToStart(errno);
}

ProcessCopy::~ProcessCopy() {
  if (!was_killed_) Kill();
}

bool ProcessCopy::Kill(milliseconds patience) {
  was_killed_ = true;
  ForgetEnded();
  const Time until = steady_clock::now() + patience;
  if (copy_ >= 0 && !Wait(Time()) && copy_ >= 0) {
    ::kill(copy_, SIGKILL);
    Wait(until);
  }
  if (copy_ >= 0) LeaveBehind(copy_);
  return AwaitEndOfAll(until) && copy_ < 0;
}

bool ProcessCopy::CanBeMade() {
  return !kIsSanitized || std::distance(std::filesystem::directory_iterator("/proc/self/task"), {}) == 1;
}

bool ProcessCopy::Await(milliseconds& patience) const {
  while (patience > milliseconds(0)) {
    const milliseconds step = std::min(patience, kStepOfWaiting);
    const auto start = steady_clock::now();
    pollfd end{line_.number(), POLLIN, 0};
    if (::poll(&end, 1, static_cast<int>(step.count())) > 0) return true;
    patience -=
        std::clamp(std::chrono::ceil<milliseconds>(steady_clock::now() - start), milliseconds(1), step);
  }
  return false;
}

bool ProcessCopy::Receive() {
  std::array<char, 4096> piece;
  for (;;) {
    const ssize_t count = ::recv(line_.number(), piece.data(), piece.size(), MSG_DONTWAIT);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno == EAGAIN || errno == EWOULDBLOCK;
    if (count == 0) return false;
    received_.append(piece.data(), static_cast<std::size_t>(count));
  }
}

std::optional<ProcessCopy::Message> ProcessCopy::Next() {
  if (received_.size() < kHead) return std::nullopt;
  std::uint32_t length = 0;
  std::memcpy(&length, received_.data() + 1, sizeof length);
  if (length > kLongestMessage) received_.clear();  // the copy has lost its way, and will be taken for that
  if (received_.empty() || received_.size() - kHead < length) return std::nullopt;
  Message message{received_.front(), received_.substr(kHead, length)};
  received_.erase(0, kHead + length);
  return message;
}

void ProcessCopy::Answer() const { SendAll(line_.number(), {&kAnswer, 1}); }

std::string ProcessCopy::End() {
  const std::optional<int> status = Wait(steady_clock::now() + kLongestEnd);
  if (!status) return "no more is known";
  if (WIFSIGNALED(*status)) return std::string("signal ") + std::to_string(WTERMSIG(*status));
  return "exit code " + std::to_string(WEXITSTATUS(*status));
}

// Nothing where it has not ended by then, or somebody else knows of its end already. It is looked for in
// short steps, since the system waits for ever or not at all.
std::optional<int> ProcessCopy::Wait(Time until) {
  if (copy_ < 0) return std::nullopt;
  int status = 0;
  pid_t ended = ::waitpid(copy_, &status, WNOHANG);
  for (auto step = kFirstStep; ended == 0 && steady_clock::now() < until;
       step = std::min(2 * step, kLastStep)) {
    std::this_thread::sleep_for(step);
    ended = ::waitpid(copy_, &status, WNOHANG);
  }
  if (ended != 0) copy_ = -1;
  return ended > 0 ? std::optional(status) : std::nullopt;
}

// A copy of the copy ends with it, but a moment later. False where one has not ended by then.
bool ProcessCopy::AwaitEndOfAll(Time until) const {
  std::array<char, 4096> piece;
  for (;;) {
    const ssize_t count = ::recv(line_.number(), piece.data(), piece.size(), MSG_DONTWAIT);
    if (count > 0 || (count < 0 && errno == EINTR)) continue;
    if (count == 0 || (errno != EAGAIN && errno != EWOULDBLOCK)) return true;
    const auto left = std::chrono::ceil<milliseconds>(until - steady_clock::now());
    if (left <= milliseconds(0)) return false;
    pollfd end{line_.number(), POLLIN, 0};
    ::poll(&end, 1, static_cast<int>(left.count()));
  }
}

}  // namespace mirelo::workbook
