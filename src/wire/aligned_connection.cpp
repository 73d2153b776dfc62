#include "wire/aligned_connection.h"

#include <algorithm>
#include <cstddef>

#include "wire/aligned_sinks.h"
#include "wire/kept_failure.h"
#include "wire/observed_sockets.h"

namespace mirelo::wire {

namespace {

static_assert(MessageAligner::kLongestChunk == host::SocketConnection::kChunkLimit,
              "records come in chunks as long as those of a socket");

constexpr const char* kUnread = "QuoteTracker does not read what it is sent";

}  // namespace

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
