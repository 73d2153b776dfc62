#include "quotetracker/stream_server.h"

#include <utility>

namespace mirelo::quotetracker {

StreamServer::StreamServer(poll::PollLoop& loop, poll::Descriptor listener, MakePeer make_peer)
    : loop_(loop),
      make_peer_(std::move(make_peer)),
      acceptor_(loop, std::move(listener), [this](poll::Descriptor socket) { Take(std::move(socket)); }) {}

void StreamServer::Take(poll::Descriptor socket) {
  if (peers_.size() >= kMostConnections) return;
  const std::uint64_t number = ++last_number_;
  // A peer that ends before it is kept, because its client has left already, is removed all the same: later.
  peers_.emplace(number, make_peer_(std::move(socket), number, [this, number] {
                   loop_.StartTimer(poll::PollLoop::Milliseconds(0),
                                    [this, number] { peers_.erase(number); });
                 }));
}

}  // namespace mirelo::quotetracker
