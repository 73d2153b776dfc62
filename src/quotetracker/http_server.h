#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "adapters/poll/poll_loop.h"
#include "quotetracker/acceptor.h"
#include "quotetracker/http_fault.h"
#include "quotetracker/random.h"

namespace mirelo::quotetracker {

// Serves HTTP/1.0 on a listening socket: one request a connection, answered by a function from resource to
// body. A client that is too slow, too large or not speaking HTTP is refused and let go; beyond
// kMostConnections new ones are closed at once.
class HttpServer {
 public:
  static constexpr std::size_t kMostConnections = 900;
  // The longest time from accepting a connection to the last byte of its reply.
  static constexpr std::chrono::seconds kPatience{15};

  using Answer = std::function<std::string(std::string_view resource)>;

  // The loop outlives the server. Called on the loop's thread, as all members are.
  HttpServer(poll::PollLoop& loop, poll::Descriptor listener, Answer answer, std::uint64_t seed,
             std::chrono::seconds patience = kPatience);
  ~HttpServer();

  std::uint16_t Port() const { return acceptor_.Port(); }
  void SetFault(HttpFaultPlan plan) { fault_ = plan; }

 private:
  struct Connection;
  using Token = poll::PollLoop::Token;

  void Take(poll::Descriptor socket);
  void OnReady(Connection& connection);
  void ReadRequest(Connection& connection);
  void Reply(Connection& connection, std::string_view resource);
  void Refuse(Connection& connection, std::string_view refusal);
  void SendReply(Connection& connection);
  void Discard(Connection& connection);
  void Close(Connection& connection);
  void CloseImpatiently();

  poll::PollLoop& loop_;
  Answer answer_;
  HttpFaultPlan fault_;
  Random random_;
  std::chrono::seconds patience_;
  Token sweep_ = 0;
  std::unordered_map<Token, std::unique_ptr<Connection>> connections_;
  Acceptor acceptor_;
};

}  // namespace mirelo::quotetracker
