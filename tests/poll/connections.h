#pragma once

#include <gtest/gtest.h>

#include <string>

#include "adapters/poll/poll_loop.h"
#include "adapters/poll/poll_winsock_library.h"
#include "automation/runtime_error.h"
#include "poll/client.h"
#include "support/loopback_server.h"

namespace mirelo::poll {

using host::SocketConnection;
using testing::LoopbackServer;
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

  // The number of the error that `call` raises; 0 when it raises none.
  template <class Call>
  static int ErrorOf(const Call& call) {
    try {
      call();
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }

  PollLoop loop_;
  PollWinsockLibrary library_{loop_};
};

}  // namespace mirelo::poll
