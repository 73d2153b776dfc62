#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "adapters/poll/poll_loop.h"
#include "adapters/poll/poll_winsock_library.h"
#include "poll/client.h"
#include "support/error_number.h"
#include "support/loopback_server.h"

namespace mirelo::poll {

using host::SocketConnection;
using testing::LoopbackServer;
using testing::NumberOf;
using Peer = LoopbackServer::Peer;

// Connections over real sockets and a loop that waits for them.
class Connections : public ::testing::Test {
 protected:
  // Runs the loop until `client` is connected.
  void Connect(Client& client, const std::string& address) {
    client.Connect(address);
    loop_.RunUntil([&] { return client.sink->connected > 0; });
  }
  void RunUntilReceived(const Client& client, std::size_t bytes) {
    loop_.RunUntil([&] { return client.sink->received.size() >= bytes; });
  }
  void RunUntilDisconnected(const Client& client) {
    loop_.RunUntil([&] { return !client.sink->reasons.empty(); });
  }

  PollLoop loop_;
  PollWinsockLibrary library_{loop_};
};

}  // namespace mirelo::poll
