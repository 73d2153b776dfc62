#include "adapters/poll/poll_loop.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace mirelo::poll {

namespace {

// Keeps the due time of any timer within the range of the clock's nanoseconds.
constexpr host::MessageLoop::Milliseconds kLongestDelay = std::chrono::hours(24 * 365 * 100);

// Counts a call of a watch's handler for as long as it is on the stack, however it ends.
class Nesting {
 public:
  Nesting(WatchList& watches, WatchList::Watch& watch) : watches_(watches), watch_(watch) { Count(1); }
  ~Nesting() { Count(-1); }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;

 private:
  void Count(int change) {
    watch_.depth += change;
    watches_.Update(watch_);
  }

  WatchList& watches_;
  WatchList::Watch& watch_;
};

}  // namespace

PollLoop::PollLoop(std::function<Time()> now) : now_(std::move(now)) {}

// Handlers may own what ends its watches and timers when it is destroyed, so the loop is still whole
// meanwhile.
PollLoop::~PollLoop() {
  watches_.Clear();
  while (timers_.TakeDue(Time::max(), std::numeric_limits<Token>::max())) {
  }
}

host::MessageLoop::Token PollLoop::Watch(int descriptor, unsigned interest,
                                         std::function<void(unsigned ready)> handler) {
  const Token token = ++last_token_;
  watches_.Add(token, descriptor, interest, std::move(handler));
  return token;
}

void PollLoop::Rewatch(Token token, unsigned interest) {
  const std::shared_ptr<WatchList::Watch> watch = watches_.Find(token);
  if (watch == nullptr) return;
  watch->interest = interest;
  watches_.Update(*watch);
}

void PollLoop::Unwatch(Token token) { watches_.Remove(token); }

host::MessageLoop::Token PollLoop::StartTimer(Milliseconds delay, std::function<void()> handler) {
  return StartTimerAt(now_() + std::clamp(delay, Milliseconds::zero(), kLongestDelay), std::move(handler));
}

host::MessageLoop::Token PollLoop::StartTimerAt(Time due, std::function<void()> handler) {
  const Token token = ++last_token_;
  timers_.Add(token, due, std::move(handler));
  return token;
}

void PollLoop::StopTimer(Token timer) { timers_.Remove(timer); }

void PollLoop::Yield() { Step(WatchList::Limit(0)); }

void PollLoop::RunUntil(const std::function<bool()>& done) {
  while (!done()) Step(TimeToNextTimer());
}

// All that a step knows is in this frame, so a step nested in a handler takes nothing from it.
void PollLoop::Step(WatchList::Limit limit) {
  const std::vector<WatchList::Ready> ready = watches_.Poll(limit);
  const std::uint64_t poll = ++last_poll_;
  // Timers come first: a timer that throws is gone, so it can't keep descriptors from their turn for long.
  if (timers_.Next()) FireTimers(now_(), last_token_);
  for (const WatchList::Ready& source : ready) HandOver(source, poll);
}

WatchList::Limit PollLoop::TimeToNextTimer() const {
  const std::optional<Time> next = timers_.Next();
  if (!next) return std::nullopt;
  const Time now = now_();
  return *next > now ? *next - now : std::chrono::nanoseconds::zero();
}

void PollLoop::FireTimers(Time now, Token last) {
  while (const std::optional<TimerQueue::Handler> handler = timers_.TakeDue(now, last)) (*handler)();
}

void PollLoop::HandOver(const WatchList::Ready& ready, std::uint64_t poll) {
  const std::shared_ptr<WatchList::Watch> watch = watches_.Find(ready.token);
  if (watch == nullptr || watch->last_poll > poll) return;
  const unsigned bits = ReadyBits(watch->interest, ready.events);
  if (bits == 0) return;
  watch->last_poll = poll;
  const Nesting nesting(watches_, *watch);
  watch->handler(bits);
}

}  // namespace mirelo::poll
