#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "quotetracker/file_descriptor.h"

namespace mirelo::quotetracker {

// The server's loop: descriptors that become ready, timers to the microsecond, and work handed over from
// other threads. All members but Post and Stop belong to the thread that runs the loop (and, before it runs,
// to the one that prepares it).
class Reactor {
 public:
  using Token = std::uint64_t;  // never 0, never used twice
  using Time = std::chrono::steady_clock::time_point;
  enum Interest : unsigned { kRead = 1, kWrite = 2 };

  // Raises std::system_error when the machine refuses.
  Reactor();

  using Handler = std::function<void(unsigned ready)>;

  // Calls `handler` with what the descriptor is ready for; errors and hang-ups count as ready for everything,
  // and are reported even while nothing is asked for. A watch ends before its descriptor is closed.
  Token Watch(int descriptor, unsigned interest, Handler handler);
  void Rewatch(Token watch, unsigned interest);
  void Unwatch(Token watch);

  // Calls `handler` once, at `time` or soon after.
  Token StartTimer(Time time, std::function<void()> handler);
  void StopTimer(Token timer);

  // Hands over work, from any thread; it runs in the loop, in the order of the calls.
  void Post(std::function<void()> work);
  // Makes Run return, from any thread; the only member that a signal handler may call.
  void Stop() noexcept;

  // Handles events until Stop. Work handed over before Stop is done before Run returns.
  void Run();

 private:
  struct Source {
    int descriptor;
    Handler handler;
  };

  void Wait();
  void FireTimers();
  void DoPosted();

  FileDescriptor poll_;
  FileDescriptor wake_;
  Token last_token_ = 0;
  std::unordered_map<Token, std::shared_ptr<Source>> sources_;
  std::map<std::pair<Time, Token>, std::function<void()>> timers_;
  std::unordered_map<Token, Time> timer_times_;
  std::mutex mutex_;  // guards posted_
  std::vector<std::function<void()>> posted_;
  std::atomic<bool> stopping_ = false;
};

}  // namespace mirelo::quotetracker
