#include "support/memory_winsock.h"

#include <cstddef>

namespace mirelo::testing {

namespace {

std::string_view NameOfCall(std::string_view call) {
  for (const std::string_view name : {"address", "text", "protocol"}) {
    if (call.starts_with(name)) return name;
  }
  return call;
}

// A sink may unsubscribe while it is called. Asks nothing of the heap, since tests count what delivery does.
template <class Sink, class Call>
void TellEach(const std::vector<std::shared_ptr<Sink>>& sinks, Call&& call) {
  for (std::size_t i = 0; i < sinks.size(); ++i) {
    const auto sink = sinks[i];
    call(*sink);
  }
}

}  // namespace

class MemoryWinsock::Address : public host::SocketAddress {
 public:
  explicit Address(MemoryWinsock& library) : library_(library) {}
  void SetText(const std::string& text) override { library_.Note("text " + text); }

 private:
  MemoryWinsock& library_;
};

std::unique_ptr<host::SocketAddress> MemoryWinsock::CreateAddress(std::int32_t family) {
  Note("address " + std::to_string(family));
  return std::make_unique<Address>(*this);
}

std::unique_ptr<host::SocketProtocol> MemoryWinsock::FindProtocol(std::int32_t family, std::int32_t type,
                                                                  std::int32_t protocol) {
  Note("protocol " + std::to_string(family) + " " + std::to_string(type) + " " + std::to_string(protocol));
  return std::make_unique<host::SocketProtocol>();
}

std::shared_ptr<host::SocketConnection> MemoryWinsock::CreateConnection(const host::SocketProtocol&) {
  Note("connection");
  connections.push_back(std::make_shared<Connection>(*this));
  return connections.back();
}

void MemoryWinsock::Note(const std::string& call) {
  calls.push_back(call);
  if (failure_ && NameOfCall(call) == failure_->first) throw failure_->second;
}

void MemoryWinsock::Connection::Deliver(std::string_view bytes) {
  if (MayHandOver()) return HandOver([&] { DeliverOutOfTurn(bytes); });
  Queue([this, bytes = std::string(bytes)] { DeliverOutOfTurn(bytes); });
}

void MemoryWinsock::Connection::DeliverOutOfTurn(std::string_view bytes) {
  const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
  TellEach(bytes_sinks_, [&](auto& sink) { sink.OnBytesReceived(*this, {data, bytes.size()}); });
}

void MemoryWinsock::Connection::DeliverNothing() {
  TellEach(bytes_sinks_, [&](auto& sink) { sink.OnBytesReceived(*this, {}); });
}

void MemoryWinsock::Connection::DeliverIdleEvents() {
  constexpr std::uint8_t kByte[] = {65, 66, 67};
  TellEach(bytes_sinks_, [&](auto& sink) {
    sink.OnBytesAvailable(*this);
    sink.OnBytesSent(*this, 3);
    sink.OnOutOfBandBytesReceived(*this, kByte);
  });
  TellEach(connection_sinks_, [&](auto& sink) { sink.OnConnected(*this); });
}

void MemoryWinsock::Connection::TellOfSent(std::int32_t count) {
  TellEach(bytes_sinks_, [&](auto& sink) { sink.OnBytesSent(*this, count); });
}

void MemoryWinsock::Connection::Drop(const std::string& reason) {
  if (MayHandOver()) return TellOfDrop(reason);
  Queue([this, reason] { TellOfDrop(reason); });
}

void MemoryWinsock::Connection::TellOfDrop(const std::string& reason) {
  state = kDropped;
  TellEach(connection_sinks_, [&](auto& sink) { sink.OnDisconnected(*this, reason); });
}

template <class Call>
void MemoryWinsock::Connection::HandOver(const Call& call) {
  handing_over_ = true;
  try {
    call();
  } catch (...) {
    handing_over_ = false;
    throw;
  }
  handing_over_ = false;
  HandOverWaiting();
}

void MemoryWinsock::Connection::Queue(std::function<void()> call) {
  waiting_.push_back(std::move(call));
  HandOverWaiting();
}

void MemoryWinsock::Connection::HandOverWaiting() {
  if (handing_over_ || waiting_.empty()) return;
  const auto next = std::move(waiting_.front());
  waiting_.pop_front();
  HandOver(next);
}

std::int32_t MemoryWinsock::Connection::Subscribe(std::shared_ptr<host::BytesTransferEvents> sink,
                                                  std::int32_t flags) {
  library_.Note("subscribe " + std::to_string(flags));
  if (flags != kBytesTransfer) throw Errors::InvalidProcedureCall();
  bytes_sinks_.push_back(std::move(sink));
  return kBytesCookie;
}

std::int32_t MemoryWinsock::Connection::Subscribe(std::shared_ptr<host::ConnectionEvents> sink,
                                                  std::int32_t flags) {
  library_.Note("subscribe " + std::to_string(flags));
  if (flags != kConnectionEvents) throw Errors::InvalidProcedureCall();
  connection_sinks_.push_back(std::move(sink));
  return kConnectionCookie;
}

void MemoryWinsock::Connection::Unsubscribe(std::int32_t id) {
  library_.Note("unsubscribe " + std::to_string(id));
  if (id == kBytesCookie) bytes_sinks_.clear();
  if (id == kConnectionCookie) connection_sinks_.clear();
}

void MemoryWinsock::Connection::Connect(const host::SocketAddress& /*address*/) {
  library_.Note("connect");
  state = kConnected;
}

std::int32_t MemoryWinsock::Connection::State() const {
  if (state_failure) throw *state_failure;
  return state;
}

void MemoryWinsock::Connection::Disconnect() {
  library_.Note("disconnect");
  state = kClosed;
  waiting_.clear();
}

void MemoryWinsock::Connection::Send(const std::string& bytes) {
  library_.Note("send");
  if (state == kClosed || state == kDropped) throw Errors::InvalidProcedureCall();
  sent.push_back(bytes);
}

}  // namespace mirelo::testing
