#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "http/http_machine.h"
#include "support/observed_loop.h"

namespace mirelo::testing {

// Beginnings of replies whose end a server never sends.
inline const std::string kEndlessStatus = "HTTP/1.0 200 OK\r\n";
inline const std::string kChunked = kEndlessStatus + "Transfer-Encoding: chunked\r\n\r\n";

// A client with bounds that a test reaches soon, and with a time that the test moves.
class Limited : public ::testing::Test {
 protected:
  using Clock = std::chrono::steady_clock;

  static constexpr curl::Limits kLimits{.head = 8 << 10, .body = 2 << 20, .redirects = 3};

  Limited() {
    host.Use(loop).Use(clock).Use(internet);
    internet.BrokenOff.Subscribe([this](const std::string& text) { told.push_back(text); });
  }

  // The script of a server that begins so and goes on with the same for ever.
  static LoopbackServer::Script Endless(std::string start, std::string more) {
    return [=](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      peer.Send(start);
      while (peer.Send(more)) {
      }
    };
  }
  // What a transfer of this server's reply ended as.
  std::vector<std::int32_t> StatesOf(const LoopbackServer& server) {
    LocalTransfer transfer(server.Port());
    transfer.Execute();
    response = transfer.Response();
    EXPECT_EQ(internet.OpenHandles(), 0u);
    return transfer.states;
  }
  std::string Told(const LoopbackServer& server, const std::string& reason) {
    return "The reply of http://" + server.Address() + " was broken off: " + reason;
  }

  WithoutProxies without_proxies;
  Clock::duration ahead{};  // of the machine's time
  std::function<Clock::time_point()> now = [this] { return Clock::now() + ahead; };
  poll::PollLoop loop{now};
  ObservedLoop observed{loop};
  curl::CurlInternet internet{observed, now, kLimits};
  ManualClock clock;
  TestHost host;
  host::HostScope scope{host};
  std::vector<std::string> told;
  std::string response;
};

}  // namespace mirelo::testing
