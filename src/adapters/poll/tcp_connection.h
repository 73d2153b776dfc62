#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "adapters/poll/ipv4.h"
#include "adapters/poll/name_resolver.h"
#include "adapters/poll/subscriptions.h"
#include "adapters/poll/tcp_socket.h"
#include "host/message_loop.h"
#include "host/winsock_library.h"

namespace mirelo::poll {

// A TCP connection that the message loop drives. Urgent data stays in the stream.
class TcpConnection final : public host::SocketConnection,
                            public std::enable_shared_from_this<TcpConnection> {
 public:
  // The connection as its owner holds it: when the last of the owner's references goes it is disconnected,
  // while calls of its own that are on the stack keep the object. The loop must outlive both.
  static std::shared_ptr<host::SocketConnection> Create(host::MessageLoop& loop,
                                                        std::shared_ptr<NameResolver> resolver);

  std::int32_t Subscribe(std::shared_ptr<host::BytesTransferEvents> sink, std::int32_t flags) override;
  std::int32_t Subscribe(std::shared_ptr<host::ConnectionEvents> sink, std::int32_t flags) override;
  void Unsubscribe(std::int32_t id) override;

  void Connect(const host::SocketAddress& address) override;
  std::int32_t State() const override { return state_; }
  void Disconnect() override;
  void Send(const std::string& bytes) override;

 private:
  TcpConnection(host::MessageLoop& loop, std::shared_ptr<NameResolver> resolver);
  void Abandon();

  void OnLookedUp(const NameResolver::Answer& answer, std::uint16_t port);
  void Open(Ipv4 ip, std::uint16_t port);
  void OnReady(unsigned ready);
  void FinishConnecting();
  void Receive();
  std::optional<int> HandOverChunk();
  void HoldBack();
  void UpdateInterest();
  void SendQueued();
  void GiveUpSending(int error);
  void Drop(const std::string& reason);
  void Close(std::int32_t state);

  TcpSocket::Passed SendOnce();

  host::MessageLoop& loop_;
  const std::shared_ptr<NameResolver> resolver_;
  Subscriptions<host::BytesTransferEvents> bytes_events_;
  Subscriptions<host::ConnectionEvents> connection_events_;
  std::int32_t last_id_ = 0;

  std::int32_t state_ = kClosed;
  std::string target_;               // the address's text, for reasons
  NameResolver::Ticket lookup_ = 0;  // 0: no name is being looked up
  TcpSocket socket_;
  host::MessageLoop::Token watch_ = 0;
  host::MessageLoop::Token failed_at_once_ = 0;  // the timer that tells of a connection that cannot be
  int error_ = 0;      // what connecting or sending met at once, to be told by an event
  std::string queue_;  // to be sent; the part before sent_ has been
  std::size_t sent_ = 0;
  bool handing_over_ = false;  // a chunk is with its sinks
  bool held_back_ = false;     // the one after it has come meanwhile
};

}  // namespace mirelo::poll
