#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "quotetracker/http_fault.h"
#include "quotetracker/portfolios.h"
#include "quotetracker/quote_source.h"
#include "quotetracker/stream_connection.h"

namespace mirelo::quotetracker {

struct ServerOptions {
  std::string listen = "127.0.0.1";  // a numeric address
  std::uint16_t http_port = 0;       // 0 takes any free port
  std::uint64_t seed = 1;            // of the market and of all chance in faults
  // Where quotes come from; a Market of the seed when there is none.
  std::unique_ptr<QuoteSource> quotes;
  // The first one is current. Unless told otherwise there is one, "Main".
  std::vector<Portfolios::Portfolio> portfolios{{"Main", {"MSFT", "IBM", "GE", "INTC", "CSCO"}}};
  HttpFaultPlan http_fault;

  std::uint16_t stream_port = 0;
  StreamOptions stream;
  // A recorded session that every stream connection gets instead of a conversation; none when empty.
  std::string play;
  double play_speed = 1;
  // Where complaints go, such as of a damaged session. Called on the server's thread.
  std::function<void(const std::string& message)> complain = [](const std::string&) {};
};

// A stand-in for QuoteTracker within the process, on a thread of its own. It serves as soon as it is
// constructed, and its destructor closes all connections and ends the thread. Members may be called from any
// thread.
class Server {
 public:
  static constexpr std::size_t kMostRemembered = 10'000;

  // Raises std::runtime_error when an address or port cannot be had, or the session to play is damaged; error
  // 67 when no descriptor is left for its loop.
  explicit Server(ServerOptions options = {});
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::uint16_t HttpPort() const { return http_port_; }
  std::uint16_t StreamPort() const { return stream_port_; }

  // The resources that were asked for over HTTP, oldest first; the last kMostRemembered of them.
  std::vector<std::string> Requests() const;
  // The messages of all clients of the stream, each without its byte 255, oldest first; the last
  // kMostRemembered.
  std::vector<std::string> StreamMessages() const;
  std::vector<Portfolios::Portfolio> PortfoliosNow() const;
  // Stream connections that stand now.
  std::size_t StreamConnections() const;
  // Quote records made for all clients of the stream, of which the last may not have been sent. Recorded
  // sessions do not count.
  std::uint64_t QuotesStreamed() const;

  // From the next request on.
  void SetHttpFault(HttpFaultPlan plan);
  // From the next thing said on a stream on.
  void SetStreamFaults(std::vector<StreamFaultPlan> plans);

 private:
  struct Parts;

  // What `work` returns, done on the server's thread.
  template <typename Work>
  auto OnLoop(Work work) const;

  std::unique_ptr<Parts> parts_;
  std::uint16_t http_port_ = 0;
  std::uint16_t stream_port_ = 0;
  std::thread thread_;
};

}  // namespace mirelo::quotetracker
