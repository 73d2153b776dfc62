#include <sys/socket.h>

#include <chrono>
#include <cstdint>
#include <string>

#include "http/http_machine.h"

namespace mirelo::testing {
namespace {

using host::WinInetApi;

// Servers that do nothing for a while. The times are the shortest that tell a stall from a slow machine.
class Stall : public HttpMachine {
 protected:
  std::uint32_t Request(std::uint16_t port, std::uint32_t option, std::int32_t milliseconds) {
    const auto session = internet.InternetOpenA(std::nullopt, 0);
    EXPECT_TRUE(internet.InternetSetOptionA(session, option, milliseconds));
    const auto connection = internet.InternetConnectA(session, "127.0.0.1", port, "", "", 3);
    return internet.HttpOpenRequestA(connection, "POST", "/", "HTTP/1.0", "", 0);
  }
  bool Read(std::uint32_t request, std::uint32_t& read) {
    char buffer[4096];
    return internet.InternetReadFile(request, buffer, sizeof buffer, read);
  }
};

TEST_F(Stall, BeforeTheHeadFailsTheSending) {
  LoopbackServer server([](LoopbackServer::Peer& peer) { peer.ReceiveAll(); });
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout, 20);
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
  server.WaitForScripts(1);  // the connection is closed
}

TEST_F(Stall, InTheHeadFailsTheSending) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\nContent-");
    peer.ReceiveAll();
  });
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout, 20);
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
}

TEST_F(Stall, InTheBodyFailsTheRead) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\nquo");
    peer.ReceiveAll();
  });
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout, 300);
  ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
  std::uint32_t read = 0;
  EXPECT_TRUE(Read(request, read));
  EXPECT_EQ(read, 3u);
  EXPECT_FALSE(Read(request, read));
  EXPECT_EQ(read, 0u);
}

TEST_F(Stall, OfASentBodyFailsTheSending) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Await();
  });
  const auto request = Request(server.Port(), WinInetApi::kOptionSendTimeout, 20);
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", std::string(64 << 20, 'x')));
}

TEST_F(Stall, IsNoneWhileSomethingComesNowAndThen) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    for (const char byte : std::string("HTTP/1.0 200 OK\r\n\r\nquote")) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      peer.Send({&byte, 1});
    }
  });
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout, 600);
  const auto start = std::chrono::steady_clock::now();
  ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
  EXPECT_GT(std::chrono::steady_clock::now() - start,
            std::chrono::milliseconds(600));  // longer than the limit
  std::uint32_t total = 0;
  for (std::uint32_t read = 1; read > 0; total += read) ASSERT_TRUE(Read(request, read));
  EXPECT_EQ(total, 5u);
}

TEST_F(Stall, IsNotWhatPassesBeforeSomebodyReads) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\n");
    peer.Await();
    peer.Send("quote");
  });
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout, 500);
  ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  loop.StartTimer(std::chrono::milliseconds(10), [&] { server.Go(); });
  std::uint32_t read = 0;
  EXPECT_TRUE(Read(request, read));
  EXPECT_EQ(read, 5u);
}

TEST_F(Stall, OfATransferLeavesWhatCameAsItsResponse) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\nContent-Length: 5\r\n\r\nquo");
    peer.ReceiveAll();
  });
  LocalTransfer transfer(server.Port());
  transfer.TimeoutSec(1);
  transfer.Execute();
  EXPECT_EQ(transfer.states, kGoodPath);
  EXPECT_EQ(transfer.Response(), "quo");
}

// A listener that never accepts holds a few connections in its queue and answers no further ones.
class DeafPort {
 public:
  DeafPort() : listener_(LoopbackServer::BoundSocket(port_)) {
    EXPECT_EQ(::listen(listener_, 0), 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port_);
    for (int& client : clients_) {
      client = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
      (void)::connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address);
    }
  }
  ~DeafPort() {
    for (const int client : clients_) ::close(client);
    ::close(listener_);
  }
  DeafPort(const DeafPort&) = delete;
  DeafPort& operator=(const DeafPort&) = delete;
  std::uint16_t Port() const { return port_; }

 private:
  std::uint16_t port_ = 0;
  int listener_;
  int clients_[3];
};

TEST_F(Stall, OfTheConnectingFailsTheSending) {
  const DeafPort deaf;
  const auto request = Request(deaf.Port(), WinInetApi::kOptionConnectTimeout, 20);
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
}

TEST_F(Stall, OfTheConnectingIsNoStallOfTheReceiving) {
  const DeafPort deaf;
  const auto session = internet.InternetOpenA(std::nullopt, 0);
  internet.InternetSetOptionA(session, WinInetApi::kOptionConnectTimeout, 100);
  internet.InternetSetOptionA(session, WinInetApi::kOptionReceiveTimeout, 10);
  const auto request = internet.HttpOpenRequestA(
      internet.InternetConnectA(session, "127.0.0.1", deaf.Port(), "", "", 3), "GET", "/", "HTTP/1.0", "", 0);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(99));
}

TEST_F(Stall, OptionsAreKnown) {
  const auto session = internet.InternetOpenA(std::nullopt, 0);
  for (const std::uint32_t option : {2u, 5u, 6u, 7u, 8u})
    EXPECT_TRUE(internet.InternetSetOptionA(session, option, 9));
  EXPECT_FALSE(internet.InternetSetOptionA(session, 3, 9));
}

}  // namespace
}  // namespace mirelo::testing
