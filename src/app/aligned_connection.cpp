#include "app/aligned_connection.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <span>

#include "app/message_aligner.h"
#include "app/observed_sockets.h"

namespace mirelo::app {

namespace {

constexpr const char* kEndlessSources = "QuoteTracker's list of quote sources does not end (over 16 MiB)";
constexpr const char* kFlood = "QuoteTracker sends faster than its messages are taken";

// Of what comes while a sink is at work. The socket library holds such bytes back itself; this is for those
// that come while a sink is called by a timer.
constexpr std::size_t kMostLater = std::size_t{16} * 1024 * 1024;

}  // namespace

// Gives a sink its bytes in whole messages. The connection inside holds it.
class AlignedConnection::Sink : public host::BytesTransferEvents, public std::enable_shared_from_this<Sink> {
 public:
  Sink(AlignedConnection& connection, std::shared_ptr<host::BytesTransferEvents> sink)
      : connection_(connection.weak_from_this()),
        inner_(connection.inner_),
        sockets_(connection.sockets_),
        loop_(connection.loop_),
        sink_(std::move(sink)) {}

  void NoteRequest(const std::string& message) { aligner_->NoteRequest(message); }

  // No message follows, until Restart.
  void Stop() {
    StopTimer();
    stopped_ = true;
  }
  // As at the beginning of a stream.
  void Restart() {
    StopTimer();
    aligner_ = std::make_shared<MessageAligner>();
    later_.clear();
    stopped_ = false;
  }
  // What waits goes on as it stands.
  void LetGo() {
    const auto inner = inner_.lock();
    if (!inner || stopped_ || delivering_) return;
    aligner_->LetGo();
    Deliver(*inner);
  }

  void OnBytesAvailable(host::SocketConnection& connection) override { sink_->OnBytesAvailable(connection); }
  void OnBytesReceived(host::SocketConnection& connection, std::span<const std::uint8_t> bytes) override {
    if (stopped_) return;
    if (delivering_) {
      later_.insert(later_.end(), bytes.begin(), bytes.end());
      if (later_.size() > kMostLater) GiveUp(kFlood);
      return;
    }
    aligner_->Add(bytes);
    Deliver(connection);
  }
  void OnBytesSent(host::SocketConnection& connection, std::int32_t count) override {
    sink_->OnBytesSent(connection, count);
  }
  void OnOutOfBandBytesReceived(host::SocketConnection& connection,
                                std::span<const std::uint8_t> bytes) override {
    sink_->OnOutOfBandBytesReceived(connection, bytes);
  }

 private:
  // A message that fails does not keep those behind it from the sink: the first failure leaves when all are
  // delivered.
  void Deliver(host::SocketConnection& connection) {
    const auto self = shared_from_this();
    StopTimer();
    std::exception_ptr failure;
    delivering_ = true;
    for (;;) {
      const auto aligner = aligner_;  // a handler may begin another stream
      while (!stopped_ && aligner == aligner_ && DeliverNext(connection, *aligner, failure)) {
      }
      if (stopped_ || later_.empty()) break;
      aligner_->Add(std::exchange(later_, {}));
    }
    delivering_ = false;
    if (!stopped_) StartTimer();
    if (failure) std::rethrow_exception(failure);
  }

  bool DeliverNext(host::SocketConnection& connection, MessageAligner& aligner, std::exception_ptr& failure) {
    try {
      const auto message = aligner.Next();
      for (const std::string& line : aligner.TakeNews()) sockets_.Told.Raise(line);
      if (aligner.IsOverfull()) GiveUp(kEndlessSources);
      if (!message) return false;
      sockets_.Delivered.Raise(*message);
      if (!stopped_) sink_->OnBytesReceived(connection, *message);
    } catch (...) {
      if (!failure) failure = std::current_exception();
    }
    return true;
  }

  void GiveUp(const char* reason) {
    Stop();
    if (const auto connection = connection_.lock()) connection->GiveUp(reason);
  }

  void StartTimer() {
    const auto patience = aligner_->Patience();
    if (!patience) return;
    timer_ = loop_.StartTimer(*patience, [weak = weak_from_this()] {
      if (const auto self = weak.lock()) self->LetGo();
    });
  }
  void StopTimer() {
    if (timer_ != 0) loop_.StopTimer(std::exchange(timer_, 0));
  }

  const std::weak_ptr<AlignedConnection> connection_;
  const std::weak_ptr<host::SocketConnection> inner_;
  ObservedSockets& sockets_;
  host::MessageLoop& loop_;
  const std::shared_ptr<host::BytesTransferEvents> sink_;
  std::shared_ptr<MessageAligner> aligner_ = std::make_shared<MessageAligner>();
  std::vector<std::uint8_t> later_;  // what came while the sink was at work
  host::MessageLoop::Token timer_ = 0;
  bool delivering_ = false;
  bool stopped_ = false;
};

AlignedConnection::AlignedConnection(ObservedSockets& sockets, host::MessageLoop& loop,
                                     std::shared_ptr<host::SocketConnection> inner)
    : sockets_(sockets), loop_(loop), inner_(std::move(inner)) {}

AlignedConnection::~AlignedConnection() { StopSinks(); }

std::int32_t AlignedConnection::Subscribe(std::shared_ptr<host::BytesTransferEvents> sink,
                                          std::int32_t flags) {
  if (!sink) return inner_->Subscribe(std::move(sink), flags);
  const auto aligned = std::make_shared<Sink>(*this, std::move(sink));
  const std::int32_t id = inner_->Subscribe(std::shared_ptr<host::BytesTransferEvents>(aligned), flags);
  sinks_.emplace_back(id, aligned);
  return id;
}

std::int32_t AlignedConnection::Subscribe(std::shared_ptr<host::ConnectionEvents> sink, std::int32_t flags) {
  const std::int32_t id = inner_->Subscribe(sink, flags);
  connection_sinks_.emplace_back(id, std::move(sink));
  return id;
}

void AlignedConnection::Unsubscribe(std::int32_t id) {
  const auto is_meant = [id](const auto& entry) { return entry.first == id; };
  for (const auto& entry : sinks_) {
    if (is_meant(entry)) entry.second->Stop();
  }
  std::erase_if(sinks_, is_meant);
  std::erase_if(connection_sinks_, is_meant);
  inner_->Unsubscribe(id);
}

void AlignedConnection::Connect(const host::SocketAddress& address) {
  inner_->Connect(address);
  given_up_ = false;
  for (const auto& [id, sink] : sinks_) sink->Restart();
}

std::int32_t AlignedConnection::State() const { return given_up_ ? kDropped : inner_->State(); }

void AlignedConnection::Disconnect() {
  StopSinks();
  inner_->Disconnect();
  given_up_ = false;
}

void AlignedConnection::Send(const std::string& bytes) {
  inner_->Send(bytes);
  for (const auto& [id, sink] : sinks_) sink->NoteRequest(bytes);
}

void AlignedConnection::EndMessages() {
  const auto sinks = sinks_;
  for (const auto& [id, sink] : sinks) sink->LetGo();
}

void AlignedConnection::GiveUp(const std::string& reason) {
  StopSinks();
  inner_->Disconnect();
  given_up_ = true;
  const auto sinks = connection_sinks_;
  sockets_.Dropped.Raise(reason);
  for (const auto& [id, sink] : sinks) sink->OnDisconnected(*this, reason);
}

void AlignedConnection::StopSinks() {
  for (const auto& [id, sink] : sinks_) sink->Stop();
}

}  // namespace mirelo::app
