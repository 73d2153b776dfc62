#include "terminal/caught_stops.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <ctime>

namespace mirelo::terminal {

namespace {

constexpr std::int64_t kOneWish = 20'000'000;  // nanoseconds
constexpr std::int64_t kSecond = 1'000'000'000;

// All that the handler of signals needs, which any thread may run.
std::atomic<int> bell{-1};
std::atomic<bool> second_ends{false};
std::atomic<bool> has_come{false};
std::atomic<int> waiting{0};  // that were not taken
std::atomic<std::int64_t> counted_last{0};
std::atomic<void (*)(int)> ending{SIG_DFL};

std::int64_t Now() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * kSecond + now.tv_nsec;
}

void NoteStop(int signal) {
  const int error = errno;
  const std::int64_t now = Now();
  const bool is_first = !has_come.exchange(true);
  const bool is_same = now - counted_last < kOneWish && (second_ends || waiting > 0);
  const bool counts = is_first || (signal != SIGHUP && !is_same);
  if (counts) counted_last = now;
  if (counts && !is_first && second_ends) {
    std::signal(signal, ending);
    ::raise(signal);  // it waits for the end of this handler
  } else if (counts) {
    ++waiting;
    constexpr std::uint64_t kOne = 1;
    [[maybe_unused]] const ssize_t size = ::write(bell, &kOne, sizeof kOne);
  }
  errno = error;
}

}  // namespace

// Calls of the system go on behind the handler where they can, as if nothing had come.
CaughtStops::CaughtStops(Second second)
    : descriptor_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC | EFD_SEMAPHORE)) {
  bell = descriptor_;
  second_ends = second == Second::kEndsTheProcess;
  has_come = false;
  waiting = 0;
  struct sigaction action {};
  action.sa_handler = NoteStop;
  action.sa_mask = signals_;
  action.sa_flags = SA_RESTART;
  for (std::size_t i = 0; i < kStopSignals.size(); ++i) {
    if (::sigismember(&signals_, kStopSignals[i]) == 1) ::sigaction(kStopSignals[i], &action, &before_[i]);
  }
  ::pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
}

CaughtStops::~CaughtStops() {
  for (std::size_t i = 0; i < kStopSignals.size(); ++i) {
    if (::sigismember(&signals_, kStopSignals[i]) == 1) ::sigaction(kStopSignals[i], &before_[i], nullptr);
  }
  bell = -1;
  ::close(descriptor_);
}

bool CaughtStops::Take() const {
  std::uint64_t one = 0;
  if (::read(descriptor_, &one, sizeof one) != sizeof one) return false;
  --waiting;
  return true;
}

bool IsCaught(int signal) {
  struct sigaction now {};
  ::sigaction(signal, nullptr, &now);
  return now.sa_handler == NoteStop;
}

void EndStopsWith(void (*handler)(int)) { ending = handler; }

}  // namespace mirelo::terminal
