#include "support/loopback_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace mirelo::testing {
namespace {

// A blocking client.
class Client {
 public:
  explicit Client(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    error_ = ::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 ? 0 : errno;
  }
  ~Client() { ::close(socket_); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  int Error() const { return error_; }
  void Send(std::string_view text) const { (void)::send(socket_, text.data(), text.size(), MSG_NOSIGNAL); }
  std::string ReceiveAll() {
    std::string all;
    char buffer[4096];
    ssize_t count = 0;
    while ((count = ::recv(socket_, buffer, sizeof buffer, 0)) > 0)
      all.append(buffer, static_cast<std::size_t>(count));
    error_ = count < 0 ? errno : 0;
    return all;
  }

 private:
  int socket_;
  int error_ = 0;
};

TEST(LoopbackServer, PlaysItsScriptToEachConnection) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    const std::string line = peer.ReceiveUntil("\n");
    peer.Send(std::to_string(peer.Index()) + " " + line + peer.Receive(2));
  });
  for (const std::string number : {"0", "1"}) {
    Client client(server.Port());
    client.Send("hello\nab");
    EXPECT_EQ(client.ReceiveAll(), number + " hello\nab");
  }
  EXPECT_EQ(server.Connections(), 2u);
  EXPECT_EQ(server.Received(1), "hello\nab");
  EXPECT_EQ(server.Received(2), "");
}

TEST(LoopbackServer, BreaksOffScriptsThatWaitWhenItGoes) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    if (peer.Receive(1) == "a") peer.Await();
    peer.ReceiveAll();
    ADD_FAILURE() << "neither was to happen";
  });
  Client waits(server.Port()), receives(server.Port());
  waits.Send("a");
  receives.Send("b");
  server.Stop();
  EXPECT_EQ(waits.ReceiveAll() + receives.ReceiveAll(), "");
}

TEST(LoopbackServer, WaitsForTheTestWhereTheScriptSaysSo) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.Await();
    peer.Send("gone on");
  });
  Client client(server.Port());
  server.Go();
  EXPECT_EQ(client.ReceiveAll(), "gone on");
  server.WaitForScripts(1);
}

TEST(LoopbackServer, ResetsWhenTold) {
  LoopbackServer server([](LoopbackServer::Peer& peer) { peer.Reset(); });
  Client client(server.Port());
  client.ReceiveAll();
  EXPECT_EQ(client.Error(), ECONNRESET);
}

TEST(RefusingPort, RefusesConnections) {
  const RefusingPort port;
  EXPECT_EQ(Client(port.Port()).Error(), ECONNREFUSED);
}

}  // namespace
}  // namespace mirelo::testing
