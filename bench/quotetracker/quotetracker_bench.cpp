#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>

#include "quotetracker/server.h"
#include "snapshot/tickers_per_request.h"
#include "support/tcp_client.h"

// What the stand-in costs above the exchange of its bytes: whoever measures against it must measure the
// client.

namespace mirelo::quotetracker {
namespace {

using testing::HttpGet;

constexpr int kTickers = kTickersPerRequest;

std::string Request() {
  std::string request = "/req?GetLastQuote(";
  for (int i = 0; i < kTickers; ++i) request += (i > 0 ? ",TK" : "TK") + std::to_string(i);
  return request + ")";
}

// A server of blocking calls that sends the same bytes whatever it is asked, to one client after the other.
class BareServer {
 public:
  explicit BareServer(std::string reply)
      : listener_(::socket(AF_INET, SOCK_STREAM, 0)), reply_(std::move(reply)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ::bind(listener_, reinterpret_cast<sockaddr*>(&address), length);
    ::listen(listener_, 16);
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { Serve(); });
  }
  ~BareServer() {
    ::shutdown(listener_, SHUT_RDWR);
    thread_.join();
    ::close(listener_);
  }
  std::uint16_t Port() const { return port_; }

 private:
  void Serve() {
    std::array<char, 16 * 1024> buffer;
    for (int client = ::accept(listener_, nullptr, nullptr); client >= 0;
         client = ::accept(listener_, nullptr, nullptr)) {
      // A request of this size comes in one piece.
      benchmark::DoNotOptimize(::recv(client, buffer.data(), buffer.size(), 0));
      benchmark::DoNotOptimize(::send(client, reply_.data(), reply_.size(), MSG_NOSIGNAL));
      ::close(client);
    }
  }

  int listener_;
  std::uint16_t port_ = 0;
  std::string reply_;
  std::thread thread_;
};

void BareExchange(benchmark::State& state) {
  Server server;
  BareServer bare(HttpGet(server.HttpPort(), Request()));
  for (auto _ : state) benchmark::DoNotOptimize(HttpGet(bare.Port(), Request()));
}
BENCHMARK(BareExchange)->Name("standin/bare_exchange")->UseRealTime();

void Exchange(benchmark::State& state) {
  Server server;
  for (auto _ : state) benchmark::DoNotOptimize(HttpGet(server.HttpPort(), Request()));
}
BENCHMARK(Exchange)->Name("standin/exchange")->UseRealTime();

}  // namespace
}  // namespace mirelo::quotetracker

BENCHMARK_MAIN();
