#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/host.h"
#include "http/tested_internet.h"
#include "snapshot/WinInet.h"
#include "support/environment_variable.h"
#include "support/loopback_server.h"
#include "support/manual_clock.h"
#include "support/test_host.h"

namespace mirelo::testing {

// An environment that names no proxy, as somebody's own may.
class WithoutProxies {
  EnvironmentVariable http_{"http_proxy", nullptr};
  EnvironmentVariable all_{"all_proxy", nullptr};
  EnvironmentVariable all_in_capitals_{"ALL_PROXY", nullptr};
  EnvironmentVariable exceptions_{"no_proxy", nullptr};
  EnvironmentVariable exceptions_in_capitals_{"NO_PROXY", nullptr};
};

// A machine with a real loop and the real HTTP client.
class HttpMachine : public ::testing::Test {
 protected:
  HttpMachine() { host.Use(loop).Use(clock).Use(internet); }

  WithoutProxies without_proxies;
  TestedLoop loop;
  ManualClock clock;
  TestedInternet internet{loop};
  TestHost host;
  host::HostScope scope{host};
};

// The script of a server that waits for the end of the request's head, sends these bytes and closes.
inline LoopbackServer::Script Reply(std::string bytes) {
  return [bytes = std::move(bytes)](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send(bytes);
  };
}

// That of a server which redirects its first `count` connections and answers the next.
inline LoopbackServer::Script RedirectThenReply(const std::string& status_and_location,
                                                std::size_t count = 1) {
  return [=](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send(peer.Index() < count ? "HTTP/1.0 " + status_and_location + "\r\n\r\nmoved"
                                   : std::string("HTTP/1.0 200 OK\r\nContent-Type: a/b\r\n\r\nquote"));
  };
}

inline std::string FirstLine(const std::string& request) { return request.substr(0, request.find("\r\n")); }

// A transfer of one resource from a server on this machine, with the states it reports.
class LocalTransfer : public WinInet {
 public:
  explicit LocalTransfer(std::uint16_t port, const std::string& resource = "/req?x") {
    HostName("127.0.0.1");
    Port(static_cast<std::int16_t>(port));
    Method("GET");
    Resource(resource);
    OnStateChanged.Subscribe([this](std::int32_t state) { states.push_back(state); });
  }
  std::vector<std::int32_t> states;
};

inline const std::vector<std::int32_t> kGoodPath = {1, 3, 6, 7, 9, 11};
inline const std::vector<std::int32_t> kSendFailed = {1, 3, 6, 8};

}  // namespace mirelo::testing
