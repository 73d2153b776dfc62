#include "adapters/poll/tcp_connection.h"

#include <algorithm>
#include <array>
#include <exception>
#include <optional>
#include <span>
#include <utility>

#include "adapters/poll/tcp_address.h"
#include "automation/runtime_error.h"

namespace mirelo::poll {

namespace {

// At most so much is handed to the socket in one step, so that a long queue doesn't keep other sources
// waiting.
constexpr std::size_t kSendLimit = 262'144;
// At most so many chunks are read away before closing.
constexpr int kDrainLimit = 64;

constexpr unsigned kRead = host::MessageLoop::kRead;
constexpr unsigned kWrite = host::MessageLoop::kWrite;

// What people are told of the end of a connection; 0 stands for the end of what the peer sends.
std::string ReasonForEnd(int error) {
  return error == 0 ? "The peer closed the connection" : TcpSocket::ReasonFor(error);
}

// Ends the stream in good order. Bytes left unread would turn the close into a reset, and a reset may take
// from the peer what it has not read yet.
void EndStream(TcpSocket& socket) {
  socket.EndSending();
  std::array<char, host::SocketConnection::kChunkLimit> unread;
  for (int chunk = 0; chunk < kDrainLimit; ++chunk) {
    if (socket.Receive(unread.data(), unread.size()).count <= 0) return;
  }
}

}  // namespace

std::shared_ptr<host::SocketConnection> TcpConnection::Create(host::MessageLoop& loop,
                                                              std::shared_ptr<NameResolver> resolver) {
  std::shared_ptr<TcpConnection> connection(new TcpConnection(loop, std::move(resolver)));
  TcpConnection* const object = connection.get();
  return {object, [connection = std::move(connection)](host::SocketConnection*) mutable {
            connection->Abandon();
            connection.reset();
          }};
}

TcpConnection::TcpConnection(host::MessageLoop& loop, std::shared_ptr<NameResolver> resolver)
    : loop_(loop), resolver_(std::move(resolver)) {}

void TcpConnection::Abandon() {
  bytes_events_.Clear();
  connection_events_.Clear();
  Disconnect();
}

std::int32_t TcpConnection::Subscribe(std::shared_ptr<host::BytesTransferEvents> sink, std::int32_t flags) {
  if (sink == nullptr) throw Errors::ObjectNotSet();
  if (flags != kBytesTransfer) throw Errors::InvalidProcedureCall();
  bytes_events_.Add(++last_id_, std::move(sink));
  return last_id_;
}

std::int32_t TcpConnection::Subscribe(std::shared_ptr<host::ConnectionEvents> sink, std::int32_t flags) {
  if (sink == nullptr) throw Errors::ObjectNotSet();
  if (flags != kConnectionEvents) throw Errors::InvalidProcedureCall();
  connection_events_.Add(++last_id_, std::move(sink));
  return last_id_;
}

void TcpConnection::Unsubscribe(std::int32_t id) {
  bytes_events_.Remove(id);
  connection_events_.Remove(id);
}

void TcpConnection::Connect(const host::SocketAddress& address) {
  const auto* const target = dynamic_cast<const TcpAddress*>(&address);
  if (state_ != kClosed || target == nullptr || target->Text().empty()) throw Errors::InvalidProcedureCall();
  if (target->Ip()) {
    Open(*target->Ip(), target->Port());
  } else {
    lookup_ = resolver_->Resolve(
        target->Host(),
        [this, port = target->Port()](const NameResolver::Answer& answer) { OnLookedUp(answer, port); });
  }
  target_ = target->Text();
  state_ = kConnecting;
}

void TcpConnection::Send(const std::string& bytes) {
  if (state_ == kClosed || state_ == kDropped) throw Errors::InvalidProcedureCall();
  if (bytes.empty()) return;
  if (sent_ > queue_.size() / 2) queue_.erase(0, std::exchange(sent_, 0));  // seldom: it moves the rest
  queue_ += bytes;
  UpdateInterest();
}

void TcpConnection::Disconnect() {
  if (state_ == kConnected) {
    while (sent_ < queue_.size() && SendOnce().count > 0) {
    }
    EndStream(socket_);
  }
  Close(kClosed);
}

void TcpConnection::OnLookedUp(const NameResolver::Answer& answer, std::uint16_t port) {
  const auto self = shared_from_this();
  lookup_ = 0;
  if (!answer.address) return Drop(answer.error);
  try {
    Open(*answer.address, port);
  } catch (const RuntimeError& error) {
    Drop(error.Description());
  }
}

void TcpConnection::Open(Ipv4 ip, std::uint16_t port) {
  socket_ = TcpSocket::Open();
  error_ = socket_.StartConnecting(ip, port);
  if (error_ == 0) {
    watch_ = loop_.Watch(socket_.Number(), kWrite, [this](unsigned ready) { OnReady(ready); });
  } else {  // the event comes from the loop all the same
    failed_at_once_ = loop_.StartTimer(host::MessageLoop::Milliseconds(0), [this] { OnReady(kWrite); });
  }
}

void TcpConnection::OnReady(unsigned ready) {
  const auto self = shared_from_this();
  if (state_ == kConnecting) return FinishConnecting();
  if ((ready & kWrite) != 0 && !queue_.empty()) SendQueued();
  if ((ready & kRead) != 0 && state_ == kConnected) Receive();
}

void TcpConnection::FinishConnecting() {
  if (error_ == 0) error_ = socket_.TakeError();
  if (error_ != 0) return Drop(ReasonForEnd(error_));
  state_ = kConnected;
  UpdateInterest();
  connection_events_.Raise([this](host::ConnectionEvents& sink) { sink.OnConnected(*this); });
}

void TcpConnection::SendQueued() {
  const TcpSocket::Passed passed = SendOnce();
  if (passed.error != 0) {
    if (!TcpSocket::WouldBlock(passed.error)) GiveUpSending(passed.error);
    return;
  }
  if (sent_ == queue_.size()) {
    queue_.clear();
    sent_ = 0;
    UpdateInterest();
  }
  bytes_events_.Raise([&](host::BytesTransferEvents& sink) {
    sink.OnBytesSent(*this, static_cast<std::int32_t>(passed.count));
  });
}

// A chunk that comes while the one before it is still with its sinks stays in the socket.
void TcpConnection::Receive() {
  if (handing_over_) return HoldBack();
  std::optional<int> end;
  std::exception_ptr failure;
  handing_over_ = true;
  try {
    end = HandOverChunk();
  } catch (...) {
    failure = std::current_exception();
  }
  handing_over_ = false;
  try {  // the loop may want memory for it
    if (std::exchange(held_back_, false)) UpdateInterest();
  } catch (...) {
    if (!failure) failure = std::current_exception();
  }
  if (failure) std::rethrow_exception(failure);
  if (end) Drop(ReasonForEnd(*end));
}

// The error with which the peer's bytes have ended, 0 for none; nothing while they go on.
std::optional<int> TcpConnection::HandOverChunk() {
  bytes_events_.Raise([this](host::BytesTransferEvents& sink) { sink.OnBytesAvailable(*this); });
  if (state_ != kConnected) return std::nullopt;
  std::array<std::uint8_t, kChunkLimit> chunk;
  const auto [count, error] = socket_.Receive(reinterpret_cast<char*>(chunk.data()), chunk.size());
  if (error != 0) return TcpSocket::WouldBlock(error) ? std::nullopt : std::optional(error);
  if (count == 0) return error_;
  const std::span<const std::uint8_t> bytes(chunk.data(), static_cast<std::size_t>(count));
  bytes_events_.Raise([&](host::BytesTransferEvents& sink) { sink.OnBytesReceived(*this, bytes); });
  return std::nullopt;
}

// The peer takes nothing more, but what it has sent before is still to be received: the end of the connection
// is met by reading.
void TcpConnection::GiveUpSending(int error) {
  error_ = error;
  queue_.clear();
  sent_ = 0;
  socket_.EndAfterFailure();
  UpdateInterest();
}

// The socket stays ready meanwhile, so nobody asks it until the sinks are done.
void TcpConnection::HoldBack() {
  held_back_ = true;
  UpdateInterest();
}

void TcpConnection::UpdateInterest() {
  if (state_ != kConnected) return;
  loop_.Rewatch(watch_, (held_back_ ? 0U : kRead) | (queue_.empty() ? 0U : kWrite));
}

void TcpConnection::Drop(const std::string& reason) {
  Close(kDropped);
  const std::string text = target_ + ": " + reason;
  connection_events_.Raise([&](host::ConnectionEvents& sink) { sink.OnDisconnected(*this, text); });
}

void TcpConnection::Close(std::int32_t state) {
  resolver_->Cancel(std::exchange(lookup_, 0));
  loop_.Unwatch(std::exchange(watch_, 0));
  loop_.StopTimer(std::exchange(failed_at_once_, 0));
  socket_.Close();
  queue_.clear();
  sent_ = 0;
  state_ = state;
}

// Hands a part of the queue to the socket.
TcpSocket::Passed TcpConnection::SendOnce() {
  const std::size_t length = std::min(queue_.size() - sent_, kSendLimit);
  const TcpSocket::Passed passed = socket_.Send(queue_.data() + sent_, length);
  if (passed.count > 0) sent_ += static_cast<std::size_t>(passed.count);
  return passed;
}

}  // namespace mirelo::poll
