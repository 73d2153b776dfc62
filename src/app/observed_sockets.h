#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "automation/event.h"
#include "host/winsock_library.h"

namespace mirelo::app {

// A socket library that tells what passes through it: the stream class says nothing when its peer drops, and
// a recording wants the bytes as they came. The connection's own sinks get them in chunks of whole quote
// records (RecordAligner).
class ObservedSockets : public host::WinsockLibrary {
 public:
  // `inner` must outlive this and all its connections, and this must outlive them too.
  explicit ObservedSockets(host::WinsockLibrary& inner) : inner_(inner) {}

  std::unique_ptr<host::SocketAddress> CreateAddress(std::int32_t family) override;
  std::unique_ptr<host::SocketProtocol> FindProtocol(std::int32_t family, std::int32_t type,
                                                     std::int32_t protocol) override;
  std::shared_ptr<host::SocketConnection> CreateConnection(const host::SocketProtocol& protocol) override;

  // Raised before the connection's own sinks get the event.
  Event<> Connected;
  Event<std::span<const std::uint8_t>> Received;
  // Raised for a drop and a refusal, not for a Disconnect of our own. The text is for people.
  Event<const std::string&> Dropped;

 private:
  host::WinsockLibrary& inner_;
};

}  // namespace mirelo::app
