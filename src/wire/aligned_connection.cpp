#include "wire/aligned_connection.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>

#include "wire/kept_failure.h"
#include "wire/message_aligner.h"
#include "wire/observed_sockets.h"

namespace mirelo::wire {

namespace {

constexpr const char* kEndlessSources = "QuoteTracker's list of quote sources does not end (over 16 MiB)";
constexpr const char* kFlood = "QuoteTracker sends faster than its messages are taken";
constexpr const char* kUnread = "QuoteTracker does not read what it is sent";

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
  // The same at the end of the connection.
  void End() {
    const auto inner = inner_.lock();
    if (!inner || stopped_ || delivering_) return;
    TakeLater();
    aligner_->End();
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
    TakeLater();
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
  // For a message that begins at `front`.
  struct Wait {
    std::optional<MessageAligner::Milliseconds> patience;
    std::uint64_t front = 0;
    friend bool operator==(const Wait&, const Wait&) = default;
  };

  // For as long as messages are with the sink, however that ends. Ends of the connection wait for it.
  class Delivering {
   public:
    explicit Delivering(Sink& sink) : sink_(sink) {
      sink_.delivering_ = true;
      Count(1);
    }
    ~Delivering() {
      sink_.delivering_ = false;
      Count(-1);
    }
    Delivering(const Delivering&) = delete;
    Delivering& operator=(const Delivering&) = delete;

   private:
    void Count(int change) {
      if (const auto connection = sink_.connection_.lock()) connection->delivering_ += change;
    }

    Sink& sink_;
  };

  // A message that fails does not keep those behind it from the sink: the first failure leaves when all are
  // delivered. What cannot even be cut, for want of memory, waits for the next time.
  void Deliver(host::SocketConnection& connection) {
    const auto self = shared_from_this();
    KeptFailure failure;
    {
      const Delivering delivering(*this);
      failure.Guard([&] { DeliverAll(connection, failure); });
    }
    failure.Guard([&] {
      if (!stopped_) WaitForMore();
    });
    TellOfEnds(connection_, failure);
    failure.Raise();
  }

  void DeliverAll(host::SocketConnection& connection, KeptFailure& failure) {
    for (;;) {
      const auto aligner = aligner_;  // a handler may begin another stream
      while (!stopped_ && aligner == aligner_) {
        std::optional<MessageAligner::Bytes> message;
        failure.Guard([&] { message = aligner->Next(); });
        for (const std::string& line : aligner->TakeNews()) failure.Guard([&] { sockets_.Told.Raise(line); });
        if (aligner->IsOverfull()) GiveUp(kEndlessSources);
        if (!message) break;
        failure.Guard([&] { HandOver(connection, *message); });
      }
      if (stopped_ || later_.empty()) return;
      TakeLater();
    }
  }

  void HandOver(host::SocketConnection& connection, std::span<const std::uint8_t> message) {
    sockets_.Delivered.Raise(message);
    if (!stopped_) sink_->OnBytesReceived(connection, message);
  }

  // Kept where there is no room for them.
  void TakeLater() {
    if (later_.empty()) return;
    aligner_->Add(later_);
    later_ = {};
  }

  void GiveUp(const char* reason) {
    Stop();
    if (const auto connection = connection_.lock()) connection->GiveUp(reason);
  }

  // A record has so much time in all; for other messages it begins anew with all that comes.
  void WaitForMore() {
    const Wait wait{aligner_->Patience(), aligner_->Front()};
    if (timer_ != 0 && aligner_->WaitsForRecord() && wait == wait_) return;
    StopTimer();
    if (!wait.patience) return;
    wait_ = wait;
    timer_ = loop_.StartTimer(*wait.patience, [weak = weak_from_this()] {
      const auto self = weak.lock();
      if (!self) return;
      self->timer_ = 0;
      self->LetGo();
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
  Wait wait_;                        // what the timer was started for
  host::MessageLoop::Token timer_ = 0;
  bool delivering_ = false;
  bool stopped_ = false;
};

// Tells a sink of the connection's end, behind the messages that are with the sinks of its bytes.
class AlignedConnection::EndSink : public host::ConnectionEvents,
                                   public std::enable_shared_from_this<EndSink> {
 public:
  EndSink(std::weak_ptr<AlignedConnection> connection, std::shared_ptr<host::ConnectionEvents> sink)
      : connection_(std::move(connection)), sink_(std::move(sink)) {}

  // No event follows.
  void Stop() { stopped_ = true; }

  void OnConnected(host::SocketConnection& connection) override { sink_->OnConnected(connection); }
  void OnDisconnected(host::SocketConnection&, const std::string& reason) override {
    TellOfEnd(connection_, [self = shared_from_this(), reason] {
      const auto connection = self->connection_.lock();
      if (connection && !self->stopped_) self->sink_->OnDisconnected(*connection, reason);
    });
  }

 private:
  const std::weak_ptr<AlignedConnection> connection_;
  const std::shared_ptr<host::ConnectionEvents> sink_;
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
  if (!sink) return inner_->Subscribe(std::move(sink), flags);
  const auto end = std::make_shared<EndSink>(weak_from_this(), std::move(sink));
  const std::int32_t id = inner_->Subscribe(std::shared_ptr<host::ConnectionEvents>(end), flags);
  end_sinks_.emplace_back(id, end);
  return id;
}

void AlignedConnection::Unsubscribe(std::int32_t id) {
  const auto is_meant = [id](const auto& entry) { return entry.first == id; };
  for (const auto& entry : sinks_) {
    if (is_meant(entry)) entry.second->Stop();
  }
  std::erase_if(sinks_, is_meant);
  for (const auto& entry : end_sinks_) {
    if (is_meant(entry)) entry.second->Stop();
  }
  std::erase_if(end_sinks_, is_meant);
  inner_->Unsubscribe(id);
}

void AlignedConnection::Connect(const host::SocketAddress& address) {
  inner_->Connect(address);
  given_up_ = false;
  unsent_ = 0;
  ends_.clear();
  for (const auto& [id, sink] : sinks_) sink->Restart();
}

std::int32_t AlignedConnection::State() const { return given_up_ ? kDropped : inner_->State(); }

void AlignedConnection::Disconnect() {
  StopSinks();
  inner_->Disconnect();
  given_up_ = false;
  unsent_ = 0;
  ends_.clear();
}

void AlignedConnection::Send(const std::string& bytes) {
  inner_->Send(bytes);
  for (const auto& [id, sink] : sinks_) sink->NoteRequest(bytes);
  unsent_ += bytes.size();
  if (unsent_ > kMostUnsent) GiveUp(kUnread);
}

void AlignedConnection::OnSent(std::int32_t count) {
  unsent_ -= std::min(unsent_, static_cast<std::size_t>(count));
}

void AlignedConnection::OnEnd(const std::string& reason) {
  TellOfEnd(weak_from_this(), [&sockets = sockets_, weak = weak_from_this(), reason] {
    KeptFailure failure;
    failure.Guard([&] {
      if (const auto connection = weak.lock()) connection->EndMessages();
    });
    sockets.Dropped.Raise(reason);
    failure.Raise();
  });
}

void AlignedConnection::EndMessages() {
  const auto sinks = sinks_;
  for (const auto& [id, sink] : sinks) sink->End();
}

void AlignedConnection::GiveUp(const std::string& reason) {
  StopSinks();
  inner_->Disconnect();
  given_up_ = true;
  unsent_ = 0;
  TellOfEnd(weak_from_this(), [&sockets = sockets_, reason] { sockets.Dropped.Raise(reason); });
  const auto sinks = end_sinks_;
  for (const auto& [id, sink] : sinks) sink->OnDisconnected(*this, reason);
}

void AlignedConnection::TellOfEnd(const std::weak_ptr<AlignedConnection>& weak, std::function<void()> tell) {
  const auto connection = weak.lock();
  if (!connection) return;
  if (connection->delivering_ == 0) return tell();
  connection->ends_.push_back(std::move(tell));
}

// One by one, and without a hold on the connection: the first to be told may let go of it.
void AlignedConnection::TellOfEnds(const std::weak_ptr<AlignedConnection>& weak, KeptFailure& failure) {
  const auto set_telling = [&](bool telling) {
    if (const auto connection = weak.lock()) connection->telling_ = telling;
  };
  const auto next = [&]() -> std::function<void()> {
    const auto connection = weak.lock();
    if (!connection || connection->telling_ || connection->delivering_ > 0 || connection->ends_.empty())
      return {};
    std::function<void()> tell = std::move(connection->ends_.front());
    connection->ends_.pop_front();
    return tell;
  };
  while (const auto tell = next()) {
    set_telling(true);
    failure.Guard(tell);
    set_telling(false);
  }
}

void AlignedConnection::StopSinks() {
  for (const auto& [id, sink] : sinks_) sink->Stop();
}

}  // namespace mirelo::wire
