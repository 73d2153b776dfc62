#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace mirelo::host {

// The socket library: objects for an address, a protocol and a connection, and sinks that a connection calls.

class SocketConnection;

class SocketAddress {
 public:
  virtual ~SocketAddress() = default;
  // Parses "host:port": a dotted IPv4 address or a host name, and a port of 1 to 65535. Names are resolved
  // when a connection uses the address. Error 5 for text of another form.
  virtual void SetText(const std::string& text) = 0;
};

class SocketProtocol {
 public:
  virtual ~SocketProtocol() = default;
};

// Takes the byte events of a connection. Events come from the message loop, never from inside a call.
//
// The bytes of a connection are handed over in order and one chunk at a time. While its sinks are told of a
// chunk, by OnBytesAvailable and OnBytesReceived, they may yield, run the loop or show a dialog: the chunk
// after it, and the end of the connection, wait until all of them have returned, or one has thrown. All else
// goes on meanwhile: other connections, timers, windows, and what this connection sends. So a sink must not
// wait for more bytes of its own connection. What waits stays with the machine, which lets the peer wait in
// turn, and costs no processor time.
class BytesTransferEvents {
 public:
  virtual ~BytesTransferEvents() = default;
  // Raised before a chunk is taken from the socket.
  virtual void OnBytesAvailable(SocketConnection&) {}
  // What the socket delivered, at most SocketConnection::kChunkLimit bytes a call; valid for the time of the
  // call. A library that stands between sockets and sinks and cuts the bytes anew may hand over longer
  // pieces, and says how long. A span without data stands for a value that is no array.
  virtual void OnBytesReceived(SocketConnection&, std::span<const std::uint8_t> /*bytes*/) {}
  // So many of the bytes queued were handed to the socket.
  virtual void OnBytesSent(SocketConnection&, std::int32_t /*count*/) {}
  // Raised by a library that takes urgent data out of the stream.
  virtual void OnOutOfBandBytesReceived(SocketConnection&, std::span<const std::uint8_t> /*bytes*/) {}
};

// Takes the connection events.
class ConnectionEvents {
 public:
  virtual ~ConnectionEvents() = default;
  virtual void OnConnected(SocketConnection&) {}
  // The connection is gone: the peer closed or reset it, or it could not be made. Raised once, after the
  // last chunk, and not for a Disconnect() of our own. `reason` is for people.
  virtual void OnDisconnected(SocketConnection&, const std::string& /*reason*/) {}
};

// One connection, kept alive by its own calls: its owner may drop it inside one of its events, and no event
// follows. Dropping it disconnects. A sink that throws keeps the event from the sinks after it.
class SocketConnection {
 public:
  static constexpr std::size_t kChunkLimit = 8192;

  // Values of State(). Bit 0 says that bytes can pass.
  static constexpr std::int32_t kClosed = 0;
  static constexpr std::int32_t kConnected = 1;
  static constexpr std::int32_t kConnecting = 2;
  static constexpr std::int32_t kDropped = 128;  // lost or refused; nothing can be sent any more

  // Kinds of subscription.
  static constexpr std::int32_t kBytesTransfer = 1;
  static constexpr std::int32_t kConnectionEvents = 8;

  virtual ~SocketConnection() = default;

  // Ids are never 0. Sinks are shared, so that one that is running outlives its unsubscription. One that is
  // added while an event is raised gets the next one. Error 5 for flags of another kind, 91 without a sink.
  virtual std::int32_t Subscribe(std::shared_ptr<BytesTransferEvents> sink, std::int32_t flags) = 0;
  virtual std::int32_t Subscribe(std::shared_ptr<ConnectionEvents> sink, std::int32_t flags) = 0;
  // Unknown ids are ignored.
  virtual void Unsubscribe(std::int32_t id) = 0;

  // Starts the connection and returns at once. The outcome arrives as an event. A RuntimeError is raised only
  // for what is known at once: error 5 in another state than kClosed and for an address without text, 67 when
  // no descriptor is left.
  virtual void Connect(const SocketAddress& address) = 0;
  virtual std::int32_t State() const = 0;
  // Sends what is queued as far as the socket takes it at once, and closes; what was received and not handed
  // over is lost. The state is kClosed then, and another Connect is possible. When a sink connects it anew,
  // the first chunk of the new connection waits until that sink has returned.
  virtual void Disconnect() = 0;
  // Queues the bytes, also while connecting. In the states kClosed and kDropped: error 5.
  virtual void Send(const std::string& bytes) = 0;
};

class WinsockLibrary {
 public:
  static constexpr std::int32_t kInet = 2;    // AF_INET
  static constexpr std::int32_t kStream = 1;  // SOCK_STREAM
  static constexpr std::int32_t kTcp = 6;     // IPPROTO_TCP

  virtual ~WinsockLibrary() = default;
  // Error 5 for a family or protocol other than those above.
  virtual std::unique_ptr<SocketAddress> CreateAddress(std::int32_t family) = 0;
  virtual std::unique_ptr<SocketProtocol> FindProtocol(std::int32_t family, std::int32_t type,
                                                       std::int32_t protocol) = 0;
  virtual std::shared_ptr<SocketConnection> CreateConnection(const SocketProtocol& protocol) = 0;
};

}  // namespace mirelo::host
