#pragma once

#include <cstdint>
#include <functional>

#include "adapters/poll/descriptor.h"
#include "adapters/poll/poll_loop.h"
#include "quotetracker/socket.h"

namespace mirelo::quotetracker {

// Accepts the connections of a listening socket and hands each to its taker. When the machine refuses one,
// for want of descriptors or memory, it waits a moment before it accepts again, in place of asking without a
// pause.
class Acceptor {
 public:
  // The loop outlives the acceptor. `take` owns what it is given.
  Acceptor(poll::PollLoop& loop, poll::Descriptor listener, std::function<void(poll::Descriptor)> take);
  ~Acceptor();
  Acceptor(const Acceptor&) = delete;
  Acceptor& operator=(const Acceptor&) = delete;

  std::uint16_t Port() const { return LocalPort(listener_); }

 private:
  void AcceptAll();

  poll::PollLoop& loop_;
  poll::Descriptor listener_;
  std::function<void(poll::Descriptor)> take_;
  poll::PollLoop::Token watch_ = 0;
  poll::PollLoop::Token rest_ = 0;
};

}  // namespace mirelo::quotetracker
