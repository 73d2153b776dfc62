#include "quotetracker/reactor.h"

#include <poll.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace mirelo::quotetracker {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr Reactor::Token kWakeToken = 0;

std::uint32_t EpollEvents(unsigned interest) {
  return ((interest & Reactor::kRead) != 0 ? EPOLLIN : 0U) |
         ((interest & Reactor::kWrite) != 0 ? EPOLLOUT : 0U);
}

unsigned ReadyInterest(std::uint32_t events) {
  if ((events & (EPOLLERR | EPOLLHUP)) != 0) return Reactor::kRead | Reactor::kWrite;
  return ((events & EPOLLIN) != 0 ? Reactor::kRead : 0U) | ((events & EPOLLOUT) != 0 ? Reactor::kWrite : 0U);
}

void Control(int poll, int operation, int descriptor, std::uint32_t events, Reactor::Token token) {
  epoll_event event{};
  event.events = events;
  event.data.u64 = token;
  if (epoll_ctl(poll, operation, descriptor, &event) != 0) {
    throw std::system_error(errno, std::generic_category(), "epoll_ctl");
  }
}

// Waits less than a millisecond, which epoll_wait cannot.
void WaitBriefly(int poll, nanoseconds time) {
  pollfd ready{poll, POLLIN, 0};
  const timespec limit{0, static_cast<long>(time.count())};
  ::ppoll(&ready, 1, &limit, nullptr);
}

}  // namespace

Reactor::Reactor() : poll_(::epoll_create1(EPOLL_CLOEXEC)), wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!poll_ || !wake_) throw std::system_error(errno, std::generic_category(), "epoll");
  Control(poll_.get(), EPOLL_CTL_ADD, wake_.get(), EPOLLIN, kWakeToken);
}

Reactor::Token Reactor::Watch(int descriptor, unsigned interest, Handler handler) {
  const Token token = ++last_token_;
  Control(poll_.get(), EPOLL_CTL_ADD, descriptor, EpollEvents(interest), token);
  sources_.emplace(token, std::make_shared<Source>(Source{descriptor, std::move(handler)}));
  return token;
}

void Reactor::Rewatch(Token watch, unsigned interest) {
  const auto found = sources_.find(watch);
  if (found == sources_.end()) return;
  Control(poll_.get(), EPOLL_CTL_MOD, found->second->descriptor, EpollEvents(interest), watch);
}

void Reactor::Unwatch(Token watch) {
  const auto found = sources_.find(watch);
  if (found == sources_.end()) return;
  Control(poll_.get(), EPOLL_CTL_DEL, found->second->descriptor, 0, watch);
  sources_.erase(found);
}

Reactor::Token Reactor::StartTimer(Time time, std::function<void()> handler) {
  const Token token = ++last_token_;
  timers_.emplace(std::pair(time, token), std::move(handler));
  timer_times_.emplace(token, time);
  return token;
}

void Reactor::StopTimer(Token timer) {
  const auto found = timer_times_.find(timer);
  if (found == timer_times_.end()) return;
  timers_.erase({found->second, timer});
  timer_times_.erase(found);
}

void Reactor::Post(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(work));
  }
  ::eventfd_write(wake_.get(), 1);
}

void Reactor::Stop() noexcept {
  stopping_ = true;
  const int error = errno;
  ::eventfd_write(wake_.get(), 1);
  errno = error;
}

void Reactor::Run() {
  while (!stopping_) {
    Wait();
    FireTimers();
  }
  DoPosted();
}

void Reactor::Wait() {
  int timeout = -1;
  if (!timers_.empty()) {
    const auto left = timers_.begin()->first.first - std::chrono::steady_clock::now();
    timeout = static_cast<int>(std::max<milliseconds::rep>(0, duration_cast<milliseconds>(left).count()));
    if (timeout == 0 && left > nanoseconds{0}) WaitBriefly(poll_.get(), left);
  }

  std::array<epoll_event, 64> events;
  const int count = ::epoll_wait(poll_.get(), events.data(), static_cast<int>(events.size()), timeout);
  for (int i = 0; i < count; ++i) {
    const Token token = events[static_cast<std::size_t>(i)].data.u64;
    if (token == kWakeToken) {
      eventfd_t ignored = 0;
      ::eventfd_read(wake_.get(), &ignored);
      DoPosted();
      continue;
    }
    // An earlier handler of this round may have ended the watch; the copy keeps the handler alive if it ends
    // its own.
    const auto found = sources_.find(token);
    if (found == sources_.end()) continue;
    const std::shared_ptr<Source> source = found->second;
    source->handler(ReadyInterest(events[static_cast<std::size_t>(i)].events));
  }
}

void Reactor::FireTimers() {
  if (timers_.empty()) return;
  // Only those due now: a handler that starts a timer for this moment must not keep the loop from its
  // descriptors.
  const auto now = std::chrono::steady_clock::now();
  const Token newest = last_token_;
  while (!timers_.empty()) {
    const auto first = timers_.begin();
    const auto [time, token] = first->first;
    if (time > now || token > newest) return;
    const auto handler = std::move(first->second);
    timers_.erase(first);
    timer_times_.erase(token);
    handler();
  }
}

void Reactor::DoPosted() {
  std::vector<std::function<void()>> work;
  {
    const std::lock_guard lock(mutex_);
    work.swap(posted_);
  }
  for (const auto& item : work) item();
}

}  // namespace mirelo::quotetracker
