#include "quotetracker/http_server.h"

#include <array>
#include <utility>
#include <vector>

#include "quotetracker/http_reply.h"
#include "quotetracker/http_request.h"
#include "quotetracker/socket.h"

namespace mirelo::quotetracker {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::size_t kRequestReadSize = std::size_t{16} * 1024;
constexpr auto kSweepPeriod = std::chrono::seconds(1);

}  // namespace

struct HttpServer::Connection {
  enum class State {
    kReading,     // the request
    kSending,     // the reply
    kDiscarding,  // what a refused client still sends: closing on unread bytes would reset the refusal away
    kStalled,     // by a fault: nothing happens until the client gives up
  };

  poll::Descriptor socket;
  SteadyClock::time_point deadline;
  Token token = 0;
  State state = State::kReading;
  bool refused = false;
  std::string received;
  std::string reply;
  std::size_t sent = 0;
};

HttpServer::HttpServer(poll::PollLoop& loop, poll::Descriptor listener, Answer answer, std::uint64_t seed,
                       std::chrono::seconds patience)
    : loop_(loop),
      answer_(std::move(answer)),
      random_(seed),
      patience_(patience),
      acceptor_(loop, std::move(listener), [this](poll::Descriptor socket) { Take(std::move(socket)); }) {
  sweep_ = loop_.StartTimerAt(SteadyClock::now() + kSweepPeriod, [this] { CloseImpatiently(); });
}

HttpServer::~HttpServer() {
  loop_.StopTimer(sweep_);
  while (!connections_.empty()) Close(*connections_.begin()->second);
}

void HttpServer::Take(poll::Descriptor socket) {
  if (connections_.size() >= kMostConnections) return;
  auto connection = std::make_unique<Connection>();
  connection->deadline = SteadyClock::now() + patience_;
  connection->token = loop_.Watch(socket.Number(), poll::PollLoop::kRead,
                                  [this, made = connection.get()](unsigned) { OnReady(*made); });
  connection->socket = std::move(socket);
  const Token token = connection->token;
  connections_.emplace(token, std::move(connection));
}

void HttpServer::OnReady(Connection& connection) {
  switch (connection.state) {
    case Connection::State::kReading:
      return ReadRequest(connection);
    case Connection::State::kSending:
      return SendReply(connection);
    case Connection::State::kDiscarding:
    case Connection::State::kStalled:
      return Discard(connection);
  }
}

void HttpServer::ReadRequest(Connection& connection) {
  std::array<char, kRequestReadSize> buffer;
  const Transfer transfer = Receive(connection.socket, buffer);
  if (transfer.count < 0 || transfer.ended) return Close(connection);
  connection.received.append(buffer.data(), static_cast<std::size_t>(transfer.count));

  const HttpParse parse = ParseHttpRequest(connection.received);
  switch (parse.state) {
    case HttpParse::State::kIncomplete:
      return;
    case HttpParse::State::kRefused:
      return Refuse(connection, parse.refusal);
    case HttpParse::State::kComplete:
      return Reply(connection, parse.request.resource);
  }
}

void HttpServer::Reply(Connection& connection, std::string_view resource) {
  const std::string body = answer_(resource);
  const HttpFault fault = fault_.Next();
  if (fault == HttpFault::kDrop) return Close(connection);
  if (fault == HttpFault::kReset) {
    ResetOnClose(connection.socket);
    return Close(connection);
  }
  if (fault == HttpFault::kStall) {
    connection.state = Connection::State::kStalled;
    return;
  }
  connection.reply =
      fault == HttpFault::kNone ? HttpReply("200 OK", body) : SpoiltReply(fault, body, random_);
  connection.state = Connection::State::kSending;
  SendReply(connection);
}

void HttpServer::Refuse(Connection& connection, std::string_view refusal) {
  connection.refused = true;
  connection.reply = HttpReply(refusal, refusal);
  connection.state = Connection::State::kSending;
  SendReply(connection);
}

void HttpServer::SendReply(Connection& connection) {
  const Transfer transfer =
      Send(connection.socket, std::string_view(connection.reply).substr(connection.sent));
  if (transfer.count < 0) return Close(connection);
  connection.sent += static_cast<std::size_t>(transfer.count);
  if (connection.sent < connection.reply.size()) {
    return loop_.Rewatch(connection.token, poll::PollLoop::kWrite);
  }
  if (!connection.refused) return Close(connection);
  EndSending(connection.socket);
  connection.state = Connection::State::kDiscarding;
  loop_.Rewatch(connection.token, poll::PollLoop::kRead);
}

void HttpServer::Discard(Connection& connection) {
  std::array<char, kRequestReadSize> buffer;
  const Transfer transfer = Receive(connection.socket, buffer);
  if (transfer.count < 0 || transfer.ended) Close(connection);
}

void HttpServer::Close(Connection& connection) {
  const Token token = connection.token;
  loop_.Unwatch(token);
  connections_.erase(token);
}

void HttpServer::CloseImpatiently() {
  const auto now = SteadyClock::now();
  std::vector<Connection*> late;
  for (const auto& [token, connection] : connections_) {
    const bool stalled = connection->state == Connection::State::kStalled;
    if (!stalled && connection->deadline <= now) late.push_back(connection.get());
  }
  for (Connection* connection : late) Close(*connection);
  sweep_ = loop_.StartTimerAt(now + kSweepPeriod, [this] { CloseImpatiently(); });
}

}  // namespace mirelo::quotetracker
