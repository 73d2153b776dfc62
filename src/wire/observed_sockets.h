#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "automation/event.h"
#include "host/message_loop.h"
#include "host/winsock_library.h"

namespace mirelo::wire {

// A socket library that tells what passes through it: the stream class says nothing when its peer drops, and
// a recording wants the bytes as they came. The connection's own sinks get them in whole messages
// (MessageAligner); one may be longer than SocketConnection::kChunkLimit, a list of sources up to
// MessageAligner::kLongestSources.
class ObservedSockets : public host::WinsockLibrary {
 public:
  // `inner` and `loop` must outlive this and all its connections, and this must outlive them too.
  ObservedSockets(host::WinsockLibrary& inner, host::MessageLoop& loop) : inner_(inner), loop_(loop) {}

  std::unique_ptr<host::SocketAddress> CreateAddress(std::int32_t family) override;
  std::unique_ptr<host::SocketProtocol> FindProtocol(std::int32_t family, std::int32_t type,
                                                     std::int32_t protocol) override;
  std::shared_ptr<host::SocketConnection> CreateConnection(const host::SocketProtocol& protocol) override;

  // Raised before the connection's own sinks get the event.
  Event<> Connected;
  Event<std::span<const std::uint8_t>> Received;
  // A message as the connection's own sink is about to get it.
  Event<std::span<const std::uint8_t>> Delivered;
  // Bytes that no sink gets, since they are no message or one that nobody asked for. A handler must raise
  // nothing.
  Event<std::span<const std::uint8_t>> LeftOut;
  // Bytes that were waiting when the connection was ended, given up or begun anew, and that no sink gets any
  // more: messages that were not handed over yet, and the beginning of one whose end has not come. A handler
  // must raise nothing.
  Event<std::span<const std::uint8_t>> Abandoned;
  // The connection's own sinks have had all whole messages of what has come, and have returned or raised.
  Event<> Rested;
  // Raised for a drop and a refusal, not for a Disconnect of our own; and for a connection that was given up,
  // for one of the reasons that AlignedConnection tells. The text is for people.
  Event<const std::string&> Dropped;
  // What people should know of bytes that were left out, once for each connection.
  Event<const std::string&> Told;

 private:
  host::WinsockLibrary& inner_;
  host::MessageLoop& loop_;
};

}  // namespace mirelo::wire
