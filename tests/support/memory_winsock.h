#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
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

  void Note(const std::string& call);

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
  void Deliver(std::string_view bytes);
  // Nested, where a sink is being told of another chunk.
  void DeliverOutOfTurn(std::string_view bytes);
  // An event whose value is no array.
  void DeliverNothing();
  // All the events in which nothing is to happen.
  void DeliverIdleEvents();
  // As what was sent goes out, of which this has no queue of its own.
  void TellOfSent(std::int32_t count);
  void Drop(const std::string& reason = "reset by peer");

  std::int32_t Subscribe(std::shared_ptr<host::BytesTransferEvents> sink, std::int32_t flags) override;
  std::int32_t Subscribe(std::shared_ptr<host::ConnectionEvents> sink, std::int32_t flags) override;
  void Unsubscribe(std::int32_t id) override;
  void Connect(const host::SocketAddress& address) override;
  std::int32_t State() const override;
  void Disconnect() override;
  void Send(const std::string& bytes) override;

  static constexpr std::int32_t kBytesCookie = 101;
  static constexpr std::int32_t kConnectionCookie = 102;

 private:
  void TellOfDrop(const std::string& reason);
  bool MayHandOver() const { return !handing_over_ && waiting_.empty(); }
  template <class Call>
  void HandOver(const Call& call);
  void Queue(std::function<void()> call);
  void HandOverWaiting();

  MemoryWinsock& library_;
  std::vector<std::shared_ptr<host::BytesTransferEvents>> bytes_sinks_;
  std::vector<std::shared_ptr<host::ConnectionEvents>> connection_sinks_;
  bool handing_over_ = false;
  std::deque<std::function<void()>> waiting_;  // what came meanwhile
};

}  // namespace mirelo::testing
