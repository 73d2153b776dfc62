#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "host/winsock_library.h"

namespace mirelo::testing {

// A socket library without sockets: a test plays the peer and delivers chunks as it likes. Each call that
// reaches the library is noted in `calls`, in words: "address 2", "text 127.0.0.1:16240", "protocol 2 1 6",
// "connection", "subscribe 1", "subscribe 8", "connect", "send", "disconnect", "unsubscribe 101".
//
// Like any library it hands over one chunk at a time: one that is delivered while a sink is being told of
// another waits until that sink has returned, and so does a drop; after a sink has thrown they wait for the
// next delivery. Only DeliverOutOfTurn does not wait.
//
// It raises error 5 where a library does: for a subscription of another kind, and for bytes to be sent in the
// states kClosed and kDropped. It differs from one in this: a connection stands as soon as Connect() returns,
// without OnConnected, and may be connected in any state; all sinks of a kind have the same id, and go
// together; addresses and protocols are not checked.
class MemoryWinsock : public host::WinsockLibrary {
 public:
  class Connection;

  std::vector<std::string> calls;
  std::vector<std::shared_ptr<Connection>> connections;  // in the order of their creation

  Connection& Newest() { return *connections.back(); }
  // Every call of this name, with this number for those that have one ("subscribe 8", but "address", "text"
  // and "protocol" alone), fails from now on.
  void FailAt(std::string call, RuntimeError error) { failure_.emplace(std::move(call), std::move(error)); }

  std::unique_ptr<host::SocketAddress> CreateAddress(std::int32_t family) override;
  std::unique_ptr<host::SocketProtocol> FindProtocol(std::int32_t family, std::int32_t type,
                                                     std::int32_t protocol) override;
  std::shared_ptr<host::SocketConnection> CreateConnection(const host::SocketProtocol& protocol) override;

 private:
  class Address;

  void Note(const std::string& call) {
    calls.push_back(call);
    if (failure_ && NameOf(call) == failure_->first) throw failure_->second;
  }
  static std::string_view NameOf(std::string_view call) {
    for (const std::string_view name : {"address", "text", "protocol"}) {
      if (call.starts_with(name)) return name;
    }
    return call;
  }

  std::optional<std::pair<std::string, RuntimeError>> failure_;
};

class MemoryWinsock::Connection : public host::SocketConnection {
 public:
  explicit Connection(MemoryWinsock& library) : library_(library) {}

  std::vector<std::string> sent;              // one element a call
  std::int32_t state = kClosed;               // what State() gives
  std::optional<RuntimeError> state_failure;  // what it raises instead

  bool HasSubscribers() const { return !bytes_sinks_.empty() || !connection_sinks_.empty(); }

  // The peer's part.
  void Deliver(std::string_view bytes) {
    if (MayHandOver()) return HandOver([&] { DeliverOutOfTurn(bytes); });
    Queue([this, bytes = std::string(bytes)] { DeliverOutOfTurn(bytes); });
  }
  // Nested, where a sink is being told of another chunk.
  void DeliverOutOfTurn(std::string_view bytes) {
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    ForEach(bytes_sinks_, [&](auto& sink) { sink.OnBytesReceived(*this, {data, bytes.size()}); });
  }
  // An event whose value is no array.
  void DeliverNothing() {
    ForEach(bytes_sinks_, [&](auto& sink) { sink.OnBytesReceived(*this, {}); });
  }
  // All the events in which nothing is to happen.
  void DeliverIdleEvents() {
    constexpr std::uint8_t kByte[] = {65, 66, 67};
    ForEach(bytes_sinks_, [&](auto& sink) {
      sink.OnBytesAvailable(*this);
      sink.OnBytesSent(*this, 3);
      sink.OnOutOfBandBytesReceived(*this, kByte);
    });
    ForEach(connection_sinks_, [&](auto& sink) { sink.OnConnected(*this); });
  }
  // As what was sent goes out, of which this has no queue of its own.
  void TellOfSent(std::int32_t count) {
    ForEach(bytes_sinks_, [&](auto& sink) { sink.OnBytesSent(*this, count); });
  }
  void Drop(const std::string& reason = "reset by peer") {
    if (MayHandOver()) return TellOfDrop(reason);
    Queue([this, reason] { TellOfDrop(reason); });
  }

  std::int32_t Subscribe(std::shared_ptr<host::BytesTransferEvents> sink, std::int32_t flags) override {
    library_.Note("subscribe " + std::to_string(flags));
    if (flags != kBytesTransfer) throw Errors::InvalidProcedureCall();
    bytes_sinks_.push_back(std::move(sink));
    return kBytesCookie;
  }
  std::int32_t Subscribe(std::shared_ptr<host::ConnectionEvents> sink, std::int32_t flags) override {
    library_.Note("subscribe " + std::to_string(flags));
    if (flags != kConnectionEvents) throw Errors::InvalidProcedureCall();
    connection_sinks_.push_back(std::move(sink));
    return kConnectionCookie;
  }
  void Unsubscribe(std::int32_t id) override {
    library_.Note("unsubscribe " + std::to_string(id));
    if (id == kBytesCookie) bytes_sinks_.clear();
    if (id == kConnectionCookie) connection_sinks_.clear();
  }
  void Connect(const host::SocketAddress&) override {
    library_.Note("connect");
    state = kConnected;
  }
  std::int32_t State() const override {
    if (state_failure) throw *state_failure;
    return state;
  }
  void Disconnect() override {
    library_.Note("disconnect");
    state = kClosed;
    waiting_.clear();
  }
  void Send(const std::string& bytes) override {
    library_.Note("send");
    if (state == kClosed || state == kDropped) throw Errors::InvalidProcedureCall();
    sent.push_back(bytes);
  }

  static constexpr std::int32_t kBytesCookie = 101;
  static constexpr std::int32_t kConnectionCookie = 102;

 private:
  void TellOfDrop(const std::string& reason) {
    state = kDropped;
    ForEach(connection_sinks_, [&](auto& sink) { sink.OnDisconnected(*this, reason); });
  }

  bool MayHandOver() const { return !handing_over_ && waiting_.empty(); }

  template <class Call>
  void HandOver(const Call& call) {
    handing_over_ = true;
    try {
      call();
    } catch (...) {
      handing_over_ = false;
      throw;
    }
    handing_over_ = false;
    HandOverWaiting();
  }
  void Queue(std::function<void()> call) {
    waiting_.push_back(std::move(call));
    HandOverWaiting();
  }
  void HandOverWaiting() {
    if (handing_over_ || waiting_.empty()) return;
    const auto next = std::move(waiting_.front());
    waiting_.pop_front();
    HandOver(next);
  }

  // A sink may unsubscribe while it is called. Asks nothing of the heap, since tests count what delivery
  // does.
  template <class Sink, class Call>
  static void ForEach(const std::vector<std::shared_ptr<Sink>>& sinks, Call&& call) {
    for (std::size_t i = 0; i < sinks.size(); ++i) {
      const auto sink = sinks[i];
      call(*sink);
    }
  }

  MemoryWinsock& library_;
  std::vector<std::shared_ptr<host::BytesTransferEvents>> bytes_sinks_;
  std::vector<std::shared_ptr<host::ConnectionEvents>> connection_sinks_;
  bool handing_over_ = false;
  std::deque<std::function<void()>> waiting_;  // what came meanwhile
};

class MemoryWinsock::Address : public host::SocketAddress {
 public:
  explicit Address(MemoryWinsock& library) : library_(library) {}
  void SetText(const std::string& text) override { library_.Note("text " + text); }

 private:
  MemoryWinsock& library_;
};

inline std::unique_ptr<host::SocketAddress> MemoryWinsock::CreateAddress(std::int32_t family) {
  Note("address " + std::to_string(family));
  return std::make_unique<Address>(*this);
}

inline std::unique_ptr<host::SocketProtocol> MemoryWinsock::FindProtocol(std::int32_t family,
                                                                         std::int32_t type,
                                                                         std::int32_t protocol) {
  Note("protocol " + std::to_string(family) + " " + std::to_string(type) + " " + std::to_string(protocol));
  return std::make_unique<host::SocketProtocol>();
}

inline std::shared_ptr<host::SocketConnection> MemoryWinsock::CreateConnection(const host::SocketProtocol&) {
  Note("connection");
  connections.push_back(std::make_shared<Connection>(*this));
  return connections.back();
}

}  // namespace mirelo::testing
