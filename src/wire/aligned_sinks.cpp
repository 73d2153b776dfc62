#include "wire/aligned_sinks.h"

#include <exception>
#include <utility>

#include "wire/kept_failure.h"
#include "wire/observed_sockets.h"

namespace mirelo::wire {

namespace {

constexpr const char* kEndlessSources = "QuoteTracker's list of quote sources does not end (over 16 MiB)";
constexpr const char* kFlood = "QuoteTracker sends faster than its messages are taken";

}  // namespace

AlignedConnection::Sink::Sink(AlignedConnection& connection, std::shared_ptr<host::BytesTransferEvents> sink)
    : connection_(connection.weak_from_this()),
      inner_(connection.inner_),
      sockets_(connection.sockets_),
      loop_(connection.loop_),
      sink_(std::move(sink)),
      aligner_(NewAligner()) {}

void AlignedConnection::Sink::Stop() {
  StopTimer();
  if (!std::exchange(stopped_, true)) Abandon();
}

void AlignedConnection::Sink::Restart() {
  Stop();
  aligner_ = NewAligner();
  later_.clear();
  stopped_ = false;
}

// A record may begin with what the aligner has and end with what came after it. The chunk that is with the
// sink belongs to the sink.
void AlignedConnection::Sink::Abandon() noexcept {
  if (!sockets_.Abandoned.HasSubscribers()) return;
  try {
    const MessageAligner::Bytes waiting = aligner_->LeftOver();
    std::vector<std::uint8_t> bytes(waiting.begin(), waiting.end());
    bytes.insert(bytes.end(), later_.begin(), later_.end());
    if (!bytes.empty()) sockets_.Abandoned.Raise(bytes);
  } catch (const std::exception&) {  // there is no memory to tell of it
  }
}

void AlignedConnection::Sink::LetGo() {
  const auto inner = inner_.lock();
  if (!inner || stopped_ || delivering_) return;
  aligner_->LetGo();
  Deliver(*inner);
}

void AlignedConnection::Sink::End() {
  const auto inner = inner_.lock();
  if (!inner || stopped_ || delivering_) return;
  TakeLater();
  aligner_->End();
  Deliver(*inner);
}

void AlignedConnection::Sink::OnBytesReceived(host::SocketConnection& connection,
                                              std::span<const std::uint8_t> bytes) {
  if (stopped_) return sockets_.Abandoned.Raise(bytes);
  if (delivering_) {
    later_.insert(later_.end(), bytes.begin(), bytes.end());
    if (later_.size() > kMostLater) GiveUp(kFlood);
    return;
  }
  TakeLater();
  aligner_->Add(bytes);
  Deliver(connection);
}

// For as long as messages are with the sink, however that ends. Ends of the connection wait for it.
class AlignedConnection::Sink::Delivering {
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

// A message that fails does not keep those after it from the sink: the first failure leaves when all are
// delivered. What cannot even be cut, for want of memory, waits for the next time.
void AlignedConnection::Sink::Deliver(host::SocketConnection& connection) {
  const auto self = shared_from_this();
  KeptFailure failure;
  {
    const Delivering delivering(*this);
    failure.Guard([&] { DeliverAll(connection, failure); });
  }
  failure.Guard([&] {
    if (!stopped_) WaitForMore();
  });
  failure.Guard([&] { sockets_.Rested.Raise(); });
  TellOfEnds(connection_, failure);
  failure.Raise();
}

void AlignedConnection::Sink::DeliverAll(host::SocketConnection& connection, KeptFailure& failure) {
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

void AlignedConnection::Sink::HandOver(host::SocketConnection& connection,
                                       std::span<const std::uint8_t> message) {
  sockets_.Delivered.Raise(message);
  if (stopped_) return sockets_.Abandoned.Raise(message);  // who was told has hung up
  sink_->OnBytesReceived(connection, message);
}

// Kept where there is no room for them.
void AlignedConnection::Sink::TakeLater() {
  if (later_.empty()) return;
  aligner_->Add(later_);
  later_ = {};
}

void AlignedConnection::Sink::GiveUp(const char* reason) {
  Stop();
  if (const auto connection = connection_.lock()) connection->GiveUp(reason);
}

// A record has so much time in all; for other messages it begins anew with all that comes.
void AlignedConnection::Sink::WaitForMore() {
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

void AlignedConnection::Sink::StopTimer() {
  if (timer_ != 0) loop_.StopTimer(std::exchange(timer_, 0));
}

std::shared_ptr<MessageAligner> AlignedConnection::Sink::NewAligner() const {
  auto aligner = std::make_shared<MessageAligner>();
  aligner->OnLeftOut([&sockets = sockets_](MessageAligner::Bytes bytes) { sockets.LeftOut.Raise(bytes); });
  return aligner;
}

void AlignedConnection::EndSink::OnDisconnected(host::SocketConnection&, const std::string& reason) {
  TellOfEnd(connection_, [self = shared_from_this(), reason] {
    const auto connection = self->connection_.lock();
    if (connection && !self->stopped_) self->sink_->OnDisconnected(*connection, reason);
  });
}

}  // namespace mirelo::wire
