#include "wire/observed_sockets.h"

#include <utility>

#include "wire/aligned_connection.h"

namespace mirelo::wire {

namespace {

// Hears what the connection's later subscribers hear, and passes it on as the library's events.
class Observer : public host::BytesTransferEvents, public host::ConnectionEvents {
 public:
  Observer(ObservedSockets& sockets, std::weak_ptr<AlignedConnection> connection)
      : sockets_(sockets), connection_(std::move(connection)) {}

  void OnBytesReceived(host::SocketConnection&, std::span<const std::uint8_t> bytes) override {
    sockets_.Received.Raise(bytes);
  }
  void OnBytesSent(host::SocketConnection&, std::int32_t count) override {
    if (const auto connection = connection_.lock()) connection->OnSent(count);
  }
  void OnConnected(host::SocketConnection&) override { sockets_.Connected.Raise(); }
  void OnDisconnected(host::SocketConnection&, const std::string& reason) override {
    if (const auto connection = connection_.lock()) connection->OnEnd(reason);
  }

 private:
  ObservedSockets& sockets_;
  const std::weak_ptr<AlignedConnection> connection_;
};

}  // namespace

std::unique_ptr<host::SocketAddress> ObservedSockets::CreateAddress(std::int32_t family) {
  return inner_.CreateAddress(family);
}

std::unique_ptr<host::SocketProtocol> ObservedSockets::FindProtocol(std::int32_t family, std::int32_t type,
                                                                    std::int32_t protocol) {
  return inner_.FindProtocol(family, type, protocol);
}

std::shared_ptr<host::SocketConnection> ObservedSockets::CreateConnection(
    const host::SocketProtocol& protocol) {
  auto inner = inner_.CreateConnection(protocol);
  auto connection = std::make_shared<AlignedConnection>(*this, loop_, inner);
  const auto observer = std::make_shared<Observer>(*this, connection);
  inner->Subscribe(std::shared_ptr<host::BytesTransferEvents>(observer),
                   host::SocketConnection::kBytesTransfer);
  inner->Subscribe(std::shared_ptr<host::ConnectionEvents>(observer),
                   host::SocketConnection::kConnectionEvents);
  return connection;
}

}  // namespace mirelo::wire
