#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/message_loop.h"
#include "host/winsock_library.h"

namespace mirelo::wire {

class KeptFailure;
class ObservedSockets;

// A connection whose byte sinks get whole messages (MessageAligner), one at a time and in order: bytes that
// come while a sink is at work wait until it returns, and so does the end of the connection. A message may be
// longer than kChunkLimit: a reply up to MessageAligner::kLongestReply, a list of sources up to
// kLongestSources. It is given up, with the events of a lost connection, when a list of sources does not end,
// when more comes while a sink is at work than is kept for it, and when the peer does not read what it is
// sent: one that asks again and again would be answered into memory.
class AlignedConnection : public host::SocketConnection,
                          public std::enable_shared_from_this<AlignedConnection> {
 public:
  // Of what was sent and not read. A day's subscriptions are a few thousand bytes.
  static constexpr std::size_t kMostUnsent = std::size_t{16} * 1024 * 1024;
  // Of what comes while a sink is at work. The socket library holds such bytes back itself; this is for those
  // that come while a sink is called by a timer.
  static constexpr std::size_t kMostLater = std::size_t{16} * 1024 * 1024;

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

  // Called when so many bytes have left the inner connection.
  void OnSent(std::int32_t count);
  // Called when the inner connection has ended, before the client's sinks are told of it: what waits for more
  // goes to the sinks as it stands, and ObservedSockets::Dropped is raised.
  void OnEnd(const std::string& reason);

 private:
  class Sink;
  class EndSink;

  void EndMessages();
  void GiveUp(const std::string& reason);
  void StopSinks();
  // Calls `tell`, which tells of the end of the connection, as soon as no message is with a sink.
  static void TellOfEnd(const std::weak_ptr<AlignedConnection>& weak, std::function<void()> tell);
  static void TellOfEnds(const std::weak_ptr<AlignedConnection>& weak, KeptFailure& failure);

  ObservedSockets& sockets_;
  host::MessageLoop& loop_;
  std::shared_ptr<host::SocketConnection> inner_;
  std::vector<std::pair<std::int32_t, std::shared_ptr<Sink>>> sinks_;
  std::vector<std::pair<std::int32_t, std::shared_ptr<EndSink>>> end_sinks_;
  std::deque<std::function<void()>> ends_;  // to be told after the messages
  std::size_t unsent_ = 0;                  // bytes that wait in the connection inside
  int delivering_ = 0;                      // sinks that messages are with
  bool telling_ = false;                    // the first of those is being told
  bool given_up_ = false;
};

}  // namespace mirelo::wire
