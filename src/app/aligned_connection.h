#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/message_loop.h"
#include "host/winsock_library.h"

namespace mirelo::app {

class ObservedSockets;

// A connection whose byte sinks get whole messages (MessageAligner), one at a time and in order: bytes that
// come while a sink is at work wait until it returns. It is given up, with the events of a lost connection,
// when a list of sources does not end.
class AlignedConnection : public host::SocketConnection,
                          public std::enable_shared_from_this<AlignedConnection> {
 public:
  // `sockets` and `loop` must outlive this.
  AlignedConnection(ObservedSockets& sockets, host::MessageLoop& loop,
                    std::shared_ptr<host::SocketConnection> inner);
  ~AlignedConnection() override;

  std::int32_t Subscribe(std::shared_ptr<host::BytesTransferEvents> sink, std::int32_t flags) override;
  std::int32_t Subscribe(std::shared_ptr<host::ConnectionEvents> sink, std::int32_t flags) override;
  void Unsubscribe(std::int32_t id) override;
  void Connect(const host::SocketAddress& address) override;
  std::int32_t State() const override;
  void Disconnect() override;
  void Send(const std::string& bytes) override;

  // The connection has come to its end: what waits for more goes to the sinks as it stands.
  void EndMessages();

 private:
  class Sink;
  friend class Sink;

  void GiveUp(const std::string& reason);
  void StopSinks();

  ObservedSockets& sockets_;
  host::MessageLoop& loop_;
  std::shared_ptr<host::SocketConnection> inner_;
  std::vector<std::pair<std::int32_t, std::shared_ptr<Sink>>> sinks_;
  std::vector<std::pair<std::int32_t, std::shared_ptr<host::ConnectionEvents>>> connection_sinks_;
  bool given_up_ = false;
};

}  // namespace mirelo::app
