#include "app/observed_sockets.h"

#include <utility>

#include "app/record_aligner.h"

namespace mirelo::app {

namespace {

// Hears what the connection's later subscribers hear, and passes it on as the library's events.
class Observer : public host::BytesTransferEvents, public host::ConnectionEvents {
 public:
  explicit Observer(ObservedSockets& sockets) : sockets_(sockets) {}

  void OnBytesReceived(host::SocketConnection&, std::span<const std::uint8_t> bytes) override {
    sockets_.Received.Raise(bytes);
  }
  void OnConnected(host::SocketConnection&) override { sockets_.Connected.Raise(); }
  void OnDisconnected(host::SocketConnection&, const std::string& reason) override {
    sockets_.Dropped.Raise(reason);
  }

 private:
  ObservedSockets& sockets_;
};

// Gives a sink its bytes in chunks of whole records.
class WholeRecordSink : public host::BytesTransferEvents {
 public:
  explicit WholeRecordSink(std::shared_ptr<host::BytesTransferEvents> sink) : sink_(std::move(sink)) {}

  void OnBytesAvailable(host::SocketConnection& connection) override { sink_->OnBytesAvailable(connection); }
  void OnBytesReceived(host::SocketConnection& connection, std::span<const std::uint8_t> bytes) override {
    aligner_.Add(bytes);
    while (const auto chunk = aligner_.Next()) sink_->OnBytesReceived(connection, *chunk);
  }
  void OnBytesSent(host::SocketConnection& connection, std::int32_t count) override {
    sink_->OnBytesSent(connection, count);
  }
  void OnOutOfBandBytesReceived(host::SocketConnection& connection,
                                std::span<const std::uint8_t> bytes) override {
    sink_->OnOutOfBandBytesReceived(connection, bytes);
  }

 private:
  std::shared_ptr<host::BytesTransferEvents> sink_;
  RecordAligner aligner_;
};

class WholeRecordConnection : public host::SocketConnection {
 public:
  explicit WholeRecordConnection(std::shared_ptr<host::SocketConnection> inner) : inner_(std::move(inner)) {}

  std::int32_t Subscribe(std::shared_ptr<host::BytesTransferEvents> sink, std::int32_t flags) override {
    if (sink) sink = std::make_shared<WholeRecordSink>(std::move(sink));
    return inner_->Subscribe(std::move(sink), flags);
  }
  std::int32_t Subscribe(std::shared_ptr<host::ConnectionEvents> sink, std::int32_t flags) override {
    return inner_->Subscribe(std::move(sink), flags);
  }
  void Unsubscribe(std::int32_t id) override { inner_->Unsubscribe(id); }
  void Connect(const host::SocketAddress& address) override { inner_->Connect(address); }
  std::int32_t State() const override { return inner_->State(); }
  void Disconnect() override { inner_->Disconnect(); }
  void Send(const std::string& bytes) override { inner_->Send(bytes); }

 private:
  std::shared_ptr<host::SocketConnection> inner_;
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
  auto connection = inner_.CreateConnection(protocol);
  const auto observer = std::make_shared<Observer>(*this);
  connection->Subscribe(std::shared_ptr<host::BytesTransferEvents>(observer),
                        host::SocketConnection::kBytesTransfer);
  connection->Subscribe(std::shared_ptr<host::ConnectionEvents>(observer),
                        host::SocketConnection::kConnectionEvents);
  return std::make_shared<WholeRecordConnection>(std::move(connection));
}

}  // namespace mirelo::app
