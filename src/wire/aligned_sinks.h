#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "host/message_loop.h"
#include "host/winsock_library.h"
#include "wire/aligned_connection.h"
#include "wire/message_aligner.h"

namespace mirelo::wire {

// Stands between a connection and one of its sinks, and hands the sink the bytes in whole messages. It is
// held by the connection that is wrapped.
class AlignedConnection::Sink : public host::BytesTransferEvents, public std::enable_shared_from_this<Sink> {
 public:
  Sink(AlignedConnection& connection, std::shared_ptr<host::BytesTransferEvents> sink);

  void NoteRequest(const std::string& message) { aligner_->NoteRequest(message); }

  // Hands over no more messages, until Restart. What waits is abandoned.
  void Stop();
  // As at the beginning of a stream. What waits is abandoned.
  void Restart();
  // Hands over what waits for the rest of its message, as it stands.
  void LetGo();
  // Does so at the end of the connection.
  void End();

  void OnBytesAvailable(host::SocketConnection& connection) override { sink_->OnBytesAvailable(connection); }
  void OnBytesReceived(host::SocketConnection& connection, std::span<const std::uint8_t> bytes) override;
  void OnBytesSent(host::SocketConnection& connection, std::int32_t count) override {
    sink_->OnBytesSent(connection, count);
  }
  void OnOutOfBandBytesReceived(host::SocketConnection& connection,
                                std::span<const std::uint8_t> bytes) override {
    sink_->OnOutOfBandBytesReceived(connection, bytes);
  }

 private:
  class Delivering;

  // For a message that begins at `front`.
  struct Wait {
    std::optional<MessageAligner::Milliseconds> patience;
    std::uint64_t front = 0;
    friend bool operator==(const Wait&, const Wait&) = default;
  };

  void Deliver(host::SocketConnection& connection);
  void DeliverAll(host::SocketConnection& connection, KeptFailure& failure);
  void HandOver(host::SocketConnection& connection, std::span<const std::uint8_t> message);
  void TakeLater();
  void Abandon() noexcept;
  void GiveUp(const char* reason);
  void WaitForMore();
  void StopTimer();
  std::shared_ptr<MessageAligner> NewAligner() const;

  const std::weak_ptr<AlignedConnection> connection_;
  const std::weak_ptr<host::SocketConnection> inner_;
  ObservedSockets& sockets_;
  host::MessageLoop& loop_;
  const std::shared_ptr<host::BytesTransferEvents> sink_;
  std::shared_ptr<MessageAligner> aligner_;
  std::vector<std::uint8_t> later_;  // what came while the sink was busy
  Wait wait_;                        // what the timer was started for
  host::MessageLoop::Token timer_ = 0;
  bool delivering_ = false;
  bool stopped_ = false;
};

// Stands between a connection and a sink of its events. It tells the sink of the connection's end only when
// all messages that came before have been handed over.
class AlignedConnection::EndSink : public host::ConnectionEvents,
                                   public std::enable_shared_from_this<EndSink> {
 public:
  EndSink(std::weak_ptr<AlignedConnection> connection, std::shared_ptr<host::ConnectionEvents> sink)
      : connection_(std::move(connection)), sink_(std::move(sink)) {}

  // No event follows.
  void Stop() { stopped_ = true; }

  void OnConnected(host::SocketConnection& connection) override { sink_->OnConnected(connection); }
  void OnDisconnected(host::SocketConnection& connection, const std::string& reason) override;

 private:
  const std::weak_ptr<AlignedConnection> connection_;
  const std::shared_ptr<host::ConnectionEvents> sink_;
  bool stopped_ = false;
};

}  // namespace mirelo::wire
