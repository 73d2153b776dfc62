#include "app/observed_sockets.h"

#include <exception>
#include <map>
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

// Gives a sink its bytes in chunks of whole records. What the socket has handed over at once may be several
// of them, and a failure over one is none of the others'.
class WholeRecordSink : public host::BytesTransferEvents {
 public:
  explicit WholeRecordSink(std::shared_ptr<host::BytesTransferEvents> sink) : sink_(std::move(sink)) {}

  void OnBytesAvailable(host::SocketConnection& connection) override { sink_->OnBytesAvailable(connection); }
  void OnBytesReceived(host::SocketConnection& connection, std::span<const std::uint8_t> bytes) override {
    aligner_.Add(bytes);
    std::exception_ptr first_failure;
    while (const auto chunk = aligner_.Next()) {
      try {
        sink_->OnBytesReceived(connection, *chunk);
      } catch (...) {
        if (!first_failure) first_failure = std::current_exception();
      }
    }
    if (first_failure) std::rethrow_exception(first_failure);
  }
  void OnBytesSent(host::SocketConnection& connection, std::int32_t count) override {
    sink_->OnBytesSent(connection, count);
  }
  void OnOutOfBandBytesReceived(host::SocketConnection& connection,
                                std::span<const std::uint8_t> bytes) override {
    sink_->OnOutOfBandBytesReceived(connection, bytes);
  }

  // Drops what has not been handed over: the sink or its connection has ended.
  void Forget() { aligner_ = RecordAligner(); }

 private:
  std::shared_ptr<host::BytesTransferEvents> sink_;
  RecordAligner aligner_;
};

class WholeRecordConnection : public host::SocketConnection {
 public:
  explicit WholeRecordConnection(std::shared_ptr<host::SocketConnection> inner) : inner_(std::move(inner)) {}
  ~WholeRecordConnection() override { Forget(); }

  std::int32_t Subscribe(std::shared_ptr<host::BytesTransferEvents> sink, std::int32_t flags) override {
    if (!sink) return inner_->Subscribe(std::move(sink), flags);
    auto whole = std::make_shared<WholeRecordSink>(std::move(sink));
    const std::int32_t id = inner_->Subscribe(std::shared_ptr<host::BytesTransferEvents>(whole), flags);
    sinks_.emplace(id, std::move(whole));
    return id;
  }
  std::int32_t Subscribe(std::shared_ptr<host::ConnectionEvents> sink, std::int32_t flags) override {
    return inner_->Subscribe(std::move(sink), flags);
  }
  void Unsubscribe(std::int32_t id) override {
    inner_->Unsubscribe(id);
    if (const auto sink = sinks_.extract(id)) sink.mapped()->Forget();
  }
  void Connect(const host::SocketAddress& address) override { inner_->Connect(address); }
  std::int32_t State() const override { return inner_->State(); }
  void Disconnect() override {
    inner_->Disconnect();
    Forget();
  }
  void Send(const std::string& bytes) override { inner_->Send(bytes); }

 private:
  void Forget() {
    for (const auto& [id, sink] : sinks_) sink->Forget();
  }

  std::shared_ptr<host::SocketConnection> inner_;
  std::map<std::int32_t, std::shared_ptr<WholeRecordSink>> sinks_;  // by their ids
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
