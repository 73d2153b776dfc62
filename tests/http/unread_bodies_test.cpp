#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

#include "http/http_machine.h"

namespace mirelo::testing {
namespace {

// Bodies that libcurl is told to leave with the server while nobody reads them.
class UnreadBody : public HttpMachine {};

// The last bytes of a body may be those at which the transfer was told to wait; the connection stays open.
TEST_F(UnreadBody, EndsWhereItEndsBehindATimeWithTheServer) {
  const std::string body(262'144 + 16'384 + 1, 'x');
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    peer.ReceiveAll();  // until the client closes
  });
  for (int i = 0; i < 10; ++i) {
    const auto session = internet.InternetOpenA(std::nullopt, 0);
    internet.InternetSetOptionA(session, host::WinInetApi::kOptionReceiveTimeout, 5000);
    const auto connection = internet.InternetConnectA(session, "127.0.0.1", server.Port(), "", "", 3);
    const auto request = internet.HttpOpenRequestA(connection, "GET", "/", "HTTP/1.0", "", 0);
    ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
    loop.RunUntil([&] { return loop.WatchCount() == 0; });  // nothing more is wanted of the server
    std::size_t received = 0;
    char buffer[4096];
    std::uint32_t read = 0;
    do {
      ASSERT_TRUE(internet.InternetReadFile(request, buffer, sizeof buffer, read)) << received;
      received += read;
    } while (read > 0);
    EXPECT_EQ(received, body.size());
    internet.InternetCloseHandle(session);
  }
}

TEST_F(UnreadBody, IsLeftWithTheServer) {
  constexpr std::size_t kSize = 32 << 20;
  std::atomic<std::size_t> sent = 0;
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\n");
    while (sent < kSize && peer.Send(std::string(1 << 16, 'x'))) sent += 1 << 16;
  });
  const auto handle =
      internet.HttpOpenRequestA(internet.InternetConnectA(internet.InternetOpenA(std::nullopt, 0),
                                                          "127.0.0.1", server.Port(), "", "", 3),
                                "GET", "/", "HTTP/1.0", "", 0);
  ASSERT_TRUE(internet.HttpSendRequestA(handle, "", ""));

  loop.RunUntil([&] { return loop.WatchCount() == 0; });  // nothing more is wanted of the server
  EXPECT_LT(sent, kSize / 2);                             // what the sockets hold, and a little here

  std::size_t total = 0;
  std::array<char, 4096> buffer;
  for (std::uint32_t read = 1; read > 0; total += read) {
    ASSERT_TRUE(internet.InternetReadFile(handle, buffer.data(), buffer.size(), read));
  }
  EXPECT_EQ(total, kSize);
}

}  // namespace
}  // namespace mirelo::testing
