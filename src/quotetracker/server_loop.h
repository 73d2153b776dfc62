#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

#include "adapters/poll/bell.h"
#include "adapters/poll/poll_loop.h"

namespace mirelo::quotetracker {

// The loop of the server's thread. Events() is for that thread alone (and, before Run, for the one that
// prepares it); the other members may be called on any thread.
class ServerLoop {
 public:
  // Error 67 when no descriptor is left.
  ServerLoop();
  ServerLoop(const ServerLoop&) = delete;
  ServerLoop& operator=(const ServerLoop&) = delete;

  poll::PollLoop& Events() { return events_; }

  // Hands over work; it runs in the loop, in the order of the calls.
  void Post(std::function<void()> work);
  // Makes Run return.
  void Stop() noexcept;

  // Handles events until Stop. Work handed over before Stop is done before Run returns.
  void Run();

 private:
  void DoPosted();

  poll::Bell wake_;  // closed after the loop that watches it
  poll::PollLoop events_;
  std::mutex mutex_;  // guards posted_
  std::vector<std::function<void()>> posted_;
  std::atomic<bool> stopping_ = false;
};

}  // namespace mirelo::quotetracker
