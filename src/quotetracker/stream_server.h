#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <unordered_map>

#include "adapters/poll/descriptor.h"
#include "adapters/poll/poll_loop.h"
#include "quotetracker/acceptor.h"

namespace mirelo::quotetracker {

// One connection of the stream, which serves itself while it lives.
class StreamPeer {
 public:
  virtual ~StreamPeer() = default;
};

// Listens for the stream's clients and keeps their connections. Beyond kMostConnections new ones are closed
// at once.
class StreamServer {
 public:
  static constexpr std::size_t kMostConnections = 100;

  // Makes the server's side of a connection. `number` counts connections from 1. When the connection has
  // ended the peer calls `ended` once; it is destroyed soon after, not during the call.
  using MakePeer = std::function<std::unique_ptr<StreamPeer>(poll::Descriptor socket, std::uint64_t number,
                                                             std::function<void()> ended)>;

  // The loop outlives the server.
  StreamServer(poll::PollLoop& loop, poll::Descriptor listener, MakePeer make_peer);

  std::uint16_t Port() const { return acceptor_.Port(); }
  std::size_t Connections() const { return peers_.size(); }

 private:
  void Take(poll::Descriptor socket);

  poll::PollLoop& loop_;
  MakePeer make_peer_;
  std::uint64_t last_number_ = 0;
  std::unordered_map<std::uint64_t, std::unique_ptr<StreamPeer>> peers_;
  Acceptor acceptor_;
};

}  // namespace mirelo::quotetracker
