#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "adapters/poll/descriptor.h"

namespace mirelo::quotetracker {

// Non-blocking TCP over IPv4 and IPv6, as the server needs it.

// Listens on a numeric address; port 0 takes any free one. Raises std::runtime_error that says what was
// refused.
poll::Descriptor ListenOn(const std::string& address, std::uint16_t port);

// The port that a socket is bound to.
std::uint16_t LocalPort(const poll::Descriptor& socket);

// The next waiting connection; no socket when there is none, or when the machine refuses one.
struct Accepted {
  poll::Descriptor socket;
  bool refused = false;  // for want of descriptors or memory
};
Accepted Accept(const poll::Descriptor& listener);

// What one call has moved: as many bytes as could be moved without waiting. A negative count means that the
// peer is gone.
struct Transfer {
  std::ptrdiff_t count = 0;  // bytes moved; 0 when nothing can be moved now
  bool ended = false;        // when receiving: the peer has closed its side
};
Transfer Receive(const poll::Descriptor& socket, std::span<char> buffer);
Transfer Send(const poll::Descriptor& socket, std::string_view bytes);

// Tells the peer that no more bytes follow; receiving goes on.
void EndSending(const poll::Descriptor& socket);

// Makes the close of this socket a reset: the peer sees an error instead of an end.
void ResetOnClose(const poll::Descriptor& socket);

}  // namespace mirelo::quotetracker
