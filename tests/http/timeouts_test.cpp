#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <string>

#include "http/http_machine.h"
#include "support/loop_signal.h"
#include "support/observed_loop.h"

namespace mirelo::testing {
namespace {

using host::WinInetApi;
using std::chrono::milliseconds;

// Servers that do nothing for longer than they may. The time passes by leaps of many minutes, made when
// everybody is known to wait, so that what the test itself takes is nothing to it.
class Stall : public ::testing::Test {
 protected:
  using Clock = std::chrono::steady_clock;

  static constexpr Clock::duration kLimit = std::chrono::minutes(10);

  Stall() { host.Use(loop).Use(clock).Use(internet); }

  // A request whose time is limited in one way, and not in any other.
  std::uint32_t Request(std::uint16_t port, std::uint32_t option) {
    const auto session = internet.InternetOpenA(std::nullopt, 0);
    EXPECT_TRUE(internet.InternetSetOptionA(session, option, kLimit / milliseconds(1)));
    const auto connection = internet.InternetConnectA(session, "127.0.0.1", port, "", "", 3);
    return internet.HttpOpenRequestA(connection, "POST", "/", "HTTP/1.0", "", 0);
  }
  bool Read(std::uint32_t request, std::uint32_t& read) {
    char buffer[4096];
    return internet.InternetReadFile(request, buffer, sizeof buffer, read);
  }

  void Pass(Clock::duration time) {
    ahead += time;
    loop.Yield();
  }
  // Lets time pass with each step of the loop, for good.
  void PassAndPass() {
    loop.StartTimer(milliseconds(0), [this] {
      ahead += kLimit / 4;
      PassAndPass();
    });
  }
  // Whether the transfer has a connection still.
  bool GoesOn() const { return loop.WatchCount() > 0; }
  void ExpectEndBehindTheLimit() {
    Pass(kLimit / 2);
    EXPECT_TRUE(GoesOn());
    Pass(kLimit / 2);
    EXPECT_FALSE(GoesOn());
  }

  WithoutProxies without_proxies;
  Clock::duration ahead{};  // of the machine's time
  std::function<Clock::time_point()> now = [this] { return Clock::now() + ahead; };
  poll::PollLoop loop{now};
  ObservedLoop observed{loop};
  curl::CurlInternet internet{observed, now};
  ManualClock clock;
  TestHost host;
  host::HostScope scope{host};
};

TEST_F(Stall, BeforeTheHeadFailsTheSending) {
  LoopSignal asked(loop, [&] { ExpectEndBehindTheLimit(); });
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    asked.Raise();
    peer.ReceiveAll();
  });
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout);
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
  server.WaitForScripts(1);  // the connection is closed
}

TEST_F(Stall, InTheHeadFailsTheSending) {
  LoopbackServer* asked_server = nullptr;
  LoopSignal asked(loop, [&] { asked_server->Go(); });
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    asked.Raise();
    peer.Await();
    peer.Send("HTTP/1.0 200 OK\r\nContent-");
    peer.ReceiveAll();
  });
  asked_server = &server;
  observed.behind_ready = [&](unsigned ready) {
    if ((ready & host::MessageLoop::kRead) != 0) ExpectEndBehindTheLimit();
  };
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout);
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
}

TEST_F(Stall, InTheBodyFailsTheRead) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\nquo");
    peer.ReceiveAll();
  });
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout);
  ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
  std::uint32_t read = 0;
  for (std::uint32_t total = 0; total < 3; total += read) ASSERT_TRUE(Read(request, read));
  loop.StartTimer(milliseconds(0), [&] { ExpectEndBehindTheLimit(); });
  EXPECT_FALSE(Read(request, read));
  EXPECT_EQ(read, 0u);
}

TEST_F(Stall, OfASentBodyFailsTheSending) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Await();
  });
  const auto request = Request(server.Port(), WinInetApi::kOptionSendTimeout);
  PassAndPass();
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", std::string(64 << 20, 'x')));
  EXPECT_LT(ahead, host::HttpTimeouts::kForever / 2);  // which is how long the reply may take
}

TEST_F(Stall, IsNoneWhileSomethingComesNowAndThen) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    for (const char byte : std::string("HTTP/1.0 200 OK\r\n\r\nquote")) {
      peer.Await();
      peer.Send({&byte, 1});
    }
  });
  observed.behind_ready = [&](unsigned) {
    ahead += kLimit * 9 / 10;
    server.Go();
  };
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout);
  ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
  EXPECT_GT(ahead, kLimit);
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
  const auto request = Request(server.Port(), WinInetApi::kOptionReceiveTimeout);
  ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
  Pass(2 * kLimit);
  EXPECT_TRUE(GoesOn());
  loop.StartTimer(milliseconds(0), [&] {
    Pass(kLimit / 2);
    server.Go();
  });
  std::uint32_t total = 0;
  for (std::uint32_t read = 1; read > 0; total += read) ASSERT_TRUE(Read(request, read));
  EXPECT_EQ(total, 5u);
}

TEST_F(Stall, OfATransferLeavesWhatCameAsItsResponse) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\nContent-Length: 5\r\n\r\nquo");
    peer.ReceiveAll();
  });
  LocalTransfer transfer(server.Port());
  transfer.TimeoutSec(600);
  transfer.OnProgress.Subscribe([&](float, std::int32_t, std::int32_t read) {
    if (read == 3) PassAndPass();
  });
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
  const auto request = Request(deaf.Port(), WinInetApi::kOptionConnectTimeout);
  loop.StartTimer(milliseconds(0), [&] { ExpectEndBehindTheLimit(); });
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
}

TEST_F(Stall, OfTheConnectingIsNoStallOfTheReceiving) {
  LoopbackServer server(Reply("HTTP/1.0 200 OK\r\n\r\nquote"));
  LocalTransfer(server.Port()).Execute();  // leaves no trace of having connected
  const DeafPort deaf;
  const auto session = internet.InternetOpenA(std::nullopt, 0);
  internet.InternetSetOptionA(session, WinInetApi::kOptionConnectTimeout, kLimit / milliseconds(1));
  internet.InternetSetOptionA(session, WinInetApi::kOptionReceiveTimeout, kLimit / 10 / milliseconds(1));
  const auto request = internet.HttpOpenRequestA(
      internet.InternetConnectA(session, "127.0.0.1", deaf.Port(), "", "", 3), "GET", "/", "HTTP/1.0", "", 0);
  loop.StartTimer(milliseconds(0), [&] { ExpectEndBehindTheLimit(); });
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
}

// The time for the reply is shorter than what the request took, and begins behind that.
TEST_F(Stall, OfTheReplyBehindALongSendingFailsTheSending) {
  LoopSignal received(loop, [&] { ExpectEndBehindTheLimit(); });
  const std::string body(64 << 20, 'x');
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Await();
    peer.Receive(body.size());
    received.Raise();
    peer.ReceiveAll();
  });
  const auto session = internet.InternetOpenA(std::nullopt, 0);
  internet.InternetSetOptionA(session, WinInetApi::kOptionSendTimeout, 50 * kLimit / milliseconds(1));
  internet.InternetSetOptionA(session, WinInetApi::kOptionReceiveTimeout, kLimit / milliseconds(1));
  const auto request =
      internet.HttpOpenRequestA(internet.InternetConnectA(session, "127.0.0.1", server.Port(), "", "", 3),
                                "POST", "/", "HTTP/1.0", "", 0);
  loop.StartTimer(milliseconds(0), [&] {
    Pass(5 * kLimit);
    EXPECT_TRUE(GoesOn());
    server.Go();
  });
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", body));
}

TEST_F(Stall, IsNoneWhereTheTimeIsBelowOne) {
  for (const std::int32_t time : {0, -1}) {
    SCOPED_TRACE(time);
    const auto session = internet.InternetOpenA(std::nullopt, 0);
    bool went_on = false;
    LoopSignal asked(loop, [&] {
      Pass(100 * kLimit);
      went_on = GoesOn();
      internet.InternetCloseHandle(session);
    });
    LoopbackServer server([&](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      asked.Raise();
      peer.ReceiveAll();
    });
    for (const std::uint32_t option : {WinInetApi::kOptionConnectTimeout, WinInetApi::kOptionSendTimeout,
                                       WinInetApi::kOptionReceiveTimeout}) {
      EXPECT_TRUE(internet.InternetSetOptionA(session, option, kLimit / milliseconds(1)));
      EXPECT_TRUE(internet.InternetSetOptionA(session, option, time));
    }
    const auto connection = internet.InternetConnectA(session, "127.0.0.1", server.Port(), "", "", 3);
    const auto request = internet.HttpOpenRequestA(connection, "GET", "/", "HTTP/1.0", "", 0);
    EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
    EXPECT_TRUE(went_on);
  }
}

TEST_F(Stall, OptionsAreKnown) {
  const auto session = internet.InternetOpenA(std::nullopt, 0);
  for (const std::uint32_t option : {2u, 5u, 6u, 7u, 8u})
    EXPECT_TRUE(internet.InternetSetOptionA(session, option, 9));
  EXPECT_FALSE(internet.InternetSetOptionA(session, 3, 9));
}

}  // namespace
}  // namespace mirelo::testing
