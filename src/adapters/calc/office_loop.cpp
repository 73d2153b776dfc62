#include "adapters/calc/office_loop.h"

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <utility>
#include <vector>

#include "adapters/calc/lookout.h"

namespace mirelo::calc {

namespace {

// How long a person's click may wait for a call that waits for a server.
constexpr std::chrono::milliseconds kBetweenOfficeEvents{10};

}  // namespace

// Until the end of a block the main thread handles by itself what is due. What that leaves to be waited for
// the lookout is told then.
class OfficeLoop::Stepping {
 public:
  explicit Stepping(OfficeLoop& loop) : loop_(loop) {
    ++loop_.depth_;
    loop_.lookout_->StepBegins();
  }
  ~Stepping() {
    loop_.TellLookout();
    loop_.lookout_->StepEnds();
    --loop_.depth_;
  }
  Stepping(const Stepping&) = delete;
  Stepping& operator=(const Stepping&) = delete;

 private:
  OfficeLoop& loop_;
};

// Until the end of a block a frame of ours waits for the office to return. What fails meanwhile is its.
class OfficeLoop::Waiting {
 public:
  Waiting(OfficeLoop& loop, const std::function<void()>* leave) : loop_(loop) {
    loop_.waiting_.push_back(leave);
  }
  ~Waiting() { loop_.waiting_.pop_back(); }
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

 private:
  OfficeLoop& loop_;
};

OfficeLoop::OfficeLoop(std::shared_ptr<Office> office, Failed failed, std::function<Time()> now)
    : now_(now),
      office_(std::move(office)),
      failed_(std::move(failed)),
      lookout_(Lookout::Of(*this, office_)),
      steps_(std::move(now)) {}

OfficeLoop::~OfficeLoop() { End(); }

void OfficeLoop::End() { lookout_->End(); }

host::MessageLoop::Token OfficeLoop::Watch(int descriptor, unsigned interest,
                                           std::function<void(unsigned ready)> handler) {
  const Token token = steps_.Watch(descriptor, interest, std::move(handler));
  TellLookout();
  return token;
}

void OfficeLoop::Rewatch(Token watch, unsigned interest) {
  steps_.Rewatch(watch, interest);
  TellLookout();
}

void OfficeLoop::Unwatch(Token watch) {
  steps_.Unwatch(watch);
  TellLookout();
}

host::MessageLoop::Token OfficeLoop::StartTimer(Milliseconds delay, std::function<void()> handler) {
  const Token token = steps_.StartTimer(delay, std::move(handler));
  TellLookout();
  return token;
}

void OfficeLoop::StopTimer(Token timer) {
  steps_.StopTimer(timer);
  TellLookout();
}

void OfficeLoop::Yield() {
  const Stepping stepping(*this);
  steps_.Yield();
}

void OfficeLoop::RunUntil(const std::function<bool()>& done) {
  const Stepping stepping(*this);
  while (!done()) {
    HandleOfficeEvents();
    if (done()) break;
    WaitAWhile();
    steps_.Yield();
  }
}

void OfficeLoop::WaitIn(const std::function<void()>& call, const std::function<void()>& leave) {
  {
    const Waiting waiting(*this, &leave);
    call();
  }
  ThrowKept();
}

void OfficeLoop::Guard(const std::function<void()>& act) noexcept {
  try {
    act();
  } catch (...) {
    // Behind a call of ours that waits, the error is that caller's.
    if (waiting_.empty()) return Fail(std::current_exception());
    kept_.push_back(std::current_exception());
    if (waiting_.back() != nullptr) (*waiting_.back())();
  }
}

// Nobody is left to be told that telling failed.
void OfficeLoop::Fail(std::exception_ptr failure) const noexcept {
  try {
    failed_(std::move(failure));
  } catch (...) {
  }
}

void OfficeLoop::TakePostedStep() noexcept {
  Guard([this] { Yield(); });
}

void OfficeLoop::HandleOfficeEvents() {
  ThrowKept();
  {
    const Waiting waiting(*this, nullptr);
    office_->HandleEvents();
  }
  ThrowKept();
}

// Until something is due, but not for long: the office has events as well.
void OfficeLoop::WaitAWhile() const {
  std::chrono::nanoseconds limit = kBetweenOfficeEvents;
  if (const auto next = steps_.NextTimer()) {
    limit = std::clamp<std::chrono::nanoseconds>(*next - now_(), Time::duration::zero(), limit);
  }
  std::vector<pollfd> polled = steps_.Polled();
  const timespec time{.tv_sec = 0, .tv_nsec = limit.count()};
  ::ppoll(polled.data(), polled.size(), &time, nullptr);
}

void OfficeLoop::ThrowKept() {
  if (kept_.empty()) return;
  const std::exception_ptr first = kept_.front();
  kept_.pop_front();
  std::rethrow_exception(first);
}

// Steps change what is to be waited for in ways that don't pass through here: timers fire, and a descriptor
// whose handlers are nested too deep is left alone.
void OfficeLoop::TellLookout() {
  const std::optional<Time> next = steps_.NextTimer();
  if (next == told_timer_) return lookout_->WaitFor(steps_.Polled());
  told_timer_ = next;
  std::optional<std::chrono::nanoseconds> wait;
  if (next) wait = *next - now_();
  lookout_->WaitFor(steps_.Polled(), wait);
}

}  // namespace mirelo::calc
