#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

#include "host/message_loop.h"

namespace mirelo::poll {

// One-shot timers in the order in which they fall due; those due at the same time in the order of their
// tokens. It never calls or destroys a handler itself: whoever takes one out does, when the queue is in order
// again.
class TimerQueue {
 public:
  using Token = host::MessageLoop::Token;
  using Time = std::chrono::steady_clock::time_point;
  using Handler = std::function<void()>;

  void Add(Token token, Time due, Handler handler);
  // Nothing for an unknown token.
  std::optional<Handler> Remove(Token token);
  // The first timer that is due at `now` and whose token is at most `last`.
  std::optional<Handler> TakeDue(Time now, Token last);
  // When the first timer falls due; nothing without timers.
  std::optional<Time> Next() const;

 private:
  using Key = std::pair<Time, Token>;
  using Timers = std::map<Key, Handler>;
  Handler Take(Timers::iterator timer);

  Timers timers_;
  std::unordered_map<Token, Timers::iterator> places_;
};

}  // namespace mirelo::poll
