#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "quotetracker/http_fault.h"
#include "quotetracker/portfolios.h"
#include "quotetracker/quote_source.h"

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
};

// A stand-in for QuoteTracker within the process, on a thread of its own. It serves as soon as it is
// constructed, and its destructor closes all connections and ends the thread. Members may be called from any
// thread.
class Server {
 public:
  static constexpr std::size_t kMostRemembered = 10'000;

  // Raises std::runtime_error when an address or port cannot be had.
  explicit Server(ServerOptions options = {});
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::uint16_t HttpPort() const { return http_port_; }

  // The resources that were asked for over HTTP, oldest first; the last kMostRemembered of them.
  std::vector<std::string> Requests() const;
  std::vector<Portfolios::Portfolio> PortfoliosNow() const;

  // From the next request on.
  void SetHttpFault(HttpFaultPlan plan);

 private:
  struct Parts;

  void OnLoop(const std::function<void()>& work) const;

  std::unique_ptr<Parts> parts_;
  std::uint16_t http_port_ = 0;
  std::thread thread_;
};

}  // namespace mirelo::quotetracker
