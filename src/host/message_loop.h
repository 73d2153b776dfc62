#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace mirelo::host {

// The one thread's loop of events: descriptors that become ready, timers that fall due.
//
// It is re-entrant: a handler may yield or run until something happens, and more events are then handled
// nested inside it, those of its own descriptor included. An implementation keeps what makes that safe: a
// step's state lives in its stack frame; tokens are never reused and are looked up just before each call; a
// ready source is handed to its handler once a step; only timers due at the start of a step fire in it; and a
// descriptor whose handlers have nested `kNestLimit` deep is left unwatched until they unwind. A handler that
// is not to be called nested takes its interest back for as long as it runs, as socket connections do.
//
// All members are called on the loop's own thread. Handlers may throw: the error leaves the Yield or RunUntil
// that called the handler, and the loop stays usable. A loop that lives in another program has handlers
// called outside of every Yield of ours as well; such a loop says where their errors go.
class MessageLoop {
 public:
  using Token = std::uint64_t;  // never 0, never used twice
  using Milliseconds = std::chrono::milliseconds;

  enum Interest : unsigned { kRead = 1, kWrite = 2 };
  static constexpr int kNestLimit = 16;

  virtual ~MessageLoop() = default;

  // Watches an open, non-blocking descriptor: on Windows, a socket. `handler` gets the Interest bits that are
  // ready; errors and hang-ups count as ready for whatever was asked. One descriptor may be watched once at a
  // time. The descriptor stays the caller's and must be unwatched before it is closed.
  virtual Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) = 0;
  // Changes what is watched for; 0 keeps the watch and calls nobody. An unknown token is ignored.
  virtual void Rewatch(Token watch, unsigned interest) = 0;
  // Ends a watch or timer; its handler is not called again, nor freed while it runs. Unknown tokens are
  // ignored.
  virtual void Unwatch(Token watch) = 0;

  // Calls `handler` once, when `delay` (at least 0) has passed.
  virtual Token StartTimer(Milliseconds delay, std::function<void()> handler) = 0;
  virtual void StopTimer(Token timer) = 0;

  // Handles what is pending at this moment, once each, without waiting.
  virtual void Yield() = 0;

  // Handles events, waiting for them, until `done()` is true. `done` is asked before each wait. Calls may
  // nest.
  virtual void RunUntil(const std::function<bool()>& done) = 0;
};

}  // namespace mirelo::host
