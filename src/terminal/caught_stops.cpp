#include "terminal/caught_stops.h"

#include <sys/eventfd.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <ctime>

namespace mirelo::terminal {

namespace {

constexpr std::int64_t kOneWish = 20'000'000;  // nanoseconds
constexpr std::int64_t kSecond = 1'000'000'000;

// All that the handler of signals needs, which any thread may run.
std::atomic<int> bell{-1};  // made for the first that catches, and never closed: a handler may be at it still
std::atomic<pid_t> process{};  // whose stops are counted: a copy of it shares the bell
std::atomic<bool> second_ends{false};
std::atomic<std::int64_t> counted_last{0};  // when; 0 before the first
std::atomic<void (*)(int)> ending{SIG_DFL};
static_assert(decltype(counted_last)::is_always_lock_free, "what was interrupted may hold the lock");

std::int64_t Now() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * kSecond + now.tv_nsec;
}

// Whether this one is a wish of its own, and then which: the first or a later one.
enum class Wish { kNone, kFirst, kLater };

Wish WishOf(int signal) {
  const std::int64_t now = Now();
  std::int64_t last = counted_last;
  do {
    if (last != 0 && (signal == SIGHUP || now - last < kOneWish)) return Wish::kNone;
  } while (!counted_last.compare_exchange_weak(last, now));
  return last == 0 ? Wish::kFirst : Wish::kLater;
}

void NoteStop(int signal) {
  if (::getpid() != process) return;
  const int error = errno;
  const Wish wish = WishOf(signal);
  if (wish == Wish::kLater && second_ends) {
    std::signal(signal, ending);
    ::raise(signal);  // it waits for the end of this handler
  } else if (wish != Wish::kNone) {
    constexpr std::uint64_t kOne = 1;
    [[maybe_unused]] const ssize_t size = ::write(bell, &kOne, sizeof kOne);
  }
  errno = error;
}

bool TakeOne() {
  std::uint64_t one = 0;
  return ::read(bell, &one, sizeof one) == sizeof one;
}

}  // namespace

// Calls of the system go on behind the handler where they can, as if nothing had come.
CaughtStops::CaughtStops(Second second) {
  if (bell < 0) bell = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC | EFD_SEMAPHORE);
  while (TakeOne()) {
  }
  process = ::getpid();
  second_ends = second == Second::kEndsTheProcess;
  counted_last = 0;
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
}

int CaughtStops::Descriptor() const { return bell; }

bool CaughtStops::Take() const { return TakeOne(); }

bool IsCaught(int signal) {
  struct sigaction now {};
  ::sigaction(signal, nullptr, &now);
  return now.sa_handler == NoteStop;
}

void EndStopsWith(void (*handler)(int)) { ending = handler; }

}  // namespace mirelo::terminal
