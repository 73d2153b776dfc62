// One full request of tickers through WinInet, its states, events and yields included, against a libcurl easy
// handle that fetches the same over the same kind of connection. Both from a server on this machine.

#include <arpa/inet.h>
#include <curl/curl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

#include <benchmark/benchmark.h>

#include "adapters/curl/curl_internet.h"
#include "adapters/headless/system_clock.h"
#include "adapters/poll/poll_loop.h"
#include "host/host.h"
#include "snapshot/WinInet.h"
#include "snapshot/tickers_per_request.h"
#include "support/test_host.h"

namespace mirelo {
namespace {

constexpr int kTickers = kTickersPerRequest;

std::string Resource() {
  std::string resource = "/req?GetLastQuote(";
  for (int i = 0; i < kTickers; ++i) resource += "TCK" + std::to_string(i) + ",";
  resource.back() = ')';
  return resource;
}

std::string ReplyBytes() {
  std::string body = "OK";
  for (int i = 0; i < kTickers; ++i) {
    body += "\r\nTCK" + std::to_string(i) +
            ",1/20/"
            "2011,08:36:13,28.35,28.34,28.36,-0.12,+,31415926,28.90,28.01,12,9,0,517,60762,28.50,22.73,31.58";
  }
  return "HTTP/1.0 200 OK\r\nContent-Type: text/plain\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\n\r\n" + body;
}

// Serves one connection after the other, with the least that a server can do.
class Server {
 public:
  Server() : reply_(ReplyBytes()), listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(listener_, 64) != 0 ||
        ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
      std::abort();
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { Serve(); });
  }
  ~Server() {
    ::shutdown(listener_, SHUT_RDWR);
    thread_.join();
    ::close(listener_);
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::uint16_t Port() const { return port_; }

 private:
  void Serve() const {
    for (int client; (client = ::accept(listener_, nullptr, nullptr)) >= 0; ::close(client)) {
      char request[8192];
      std::size_t size = 0;
      for (ssize_t count; (count = ::read(client, request + size, sizeof request - size)) > 0;) {
        size += static_cast<std::size_t>(count);
        if (std::string_view(request, size).ends_with("\r\n\r\n")) break;
      }
      (void)!::write(client, reply_.data(), reply_.size());
    }
  }

  std::string reply_;
  int listener_;
  std::uint16_t port_ = 0;
  std::thread thread_;
};

void Execute(benchmark::State& state) {
  const Server server;
  const std::string resource = Resource();
  poll::PollLoop loop;
  headless::SystemClock clock;
  curl::CurlInternet internet(loop);
  testing::TestHost host;
  host::HostScope scope(host.Use(loop).Use(clock).Use(internet));
  for (auto _ : state) {
    WinInet transfer;
    transfer.HostName("127.0.0.1");
    transfer.Resource(resource);
    transfer.Port(static_cast<std::int16_t>(server.Port()));
    transfer.Method("GET");
    transfer.Execute();
    if (transfer.Response().empty()) return state.SkipWithError("nothing was fetched");
  }
}

std::size_t Append(char* bytes, std::size_t size, std::size_t count, void* text) {
  static_cast<std::string*>(text)->append(bytes, size * count);
  return size * count;
}

void BareCurl(benchmark::State& state) {
  const Server server;
  const std::string resource = Resource();
  CURL* const easy = curl_easy_init();
  std::string response;
  curl_easy_setopt(easy, CURLOPT_URL,
                   ("http://127.0.0.1:" + std::to_string(server.Port()) + resource).c_str());
  curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_0});
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, Append);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, &response);
  for (auto _ : state) {
    response.clear();
    if (curl_easy_perform(easy) != CURLE_OK || response.empty())
      return state.SkipWithError("nothing was fetched");
  }
  curl_easy_cleanup(easy);
}

BENCHMARK(Execute)->Name("http/Execute")->UseRealTime();
BENCHMARK(BareCurl)->Name("http/bare_curl")->UseRealTime();

}  // namespace
}  // namespace mirelo

BENCHMARK_MAIN();
