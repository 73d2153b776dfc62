#include "adapters/poll/timer_queue.h"

namespace mirelo::poll {

void TimerQueue::Add(Token token, Time due, Handler handler) {
  const auto place = timers_.emplace(Key(due, token), std::move(handler)).first;
  places_.emplace(token, place);
}

std::optional<TimerQueue::Handler> TimerQueue::Remove(Token token) {
  const auto place = places_.find(token);
  if (place == places_.end()) return std::nullopt;
  return Take(place->second);
}

std::optional<TimerQueue::Handler> TimerQueue::TakeDue(Time now, Token last) {
  // A timer newer than `last` was added at `now` or later, so it stands behind all that may be taken.
  if (timers_.empty() || timers_.begin()->first > Key(now, last)) return std::nullopt;
  return Take(timers_.begin());
}

std::optional<TimerQueue::Time> TimerQueue::Next() const {
  if (timers_.empty()) return std::nullopt;
  return timers_.begin()->first.first;
}

TimerQueue::Handler TimerQueue::Take(Timers::iterator timer) {
  Handler handler = std::move(timer->second);
  places_.erase(timer->first.second);
  timers_.erase(timer);
  return handler;
}

}  // namespace mirelo::poll
