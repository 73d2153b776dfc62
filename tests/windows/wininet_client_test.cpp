#include "adapters/windows/system.h"

#include "adapters/windows/wininet_client.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "adapters/windows/window_loop.h"
#include "support/loopback_server.h"

namespace mirelo::windows {
namespace {

using Api = host::WinInetApi;
using ::testing::AnyOf;
using testing::LoopbackServer;
using ::testing::StartsWith;
using Peer = LoopbackServer::Peer;

LoopbackServer::Script Replying(std::string bytes) {
  return [bytes = std::move(bytes)](Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send(bytes);
  };
}

// A user's settings of the internet that name a proxy, in place of those of whoever runs this.
class ThroughAProxy {
 public:
  explicit ThroughAProxy(const std::string& address) {
    EXPECT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, kAside, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &aside_,
                                nullptr),
              ERROR_SUCCESS);
    const DWORD is_used = 1;
    Set("ProxyEnable", REG_DWORD, &is_used, sizeof is_used);
    Set("ProxyServer", REG_SZ, address.c_str(), address.size() + 1);
    EXPECT_EQ(::RegOverridePredefKey(HKEY_CURRENT_USER, aside_), ERROR_SUCCESS);
  }
  ~ThroughAProxy() {
    ::RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    ::RegCloseKey(aside_);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, kAside);
  }
  ThroughAProxy(const ThroughAProxy&) = delete;
  ThroughAProxy& operator=(const ThroughAProxy&) = delete;

 private:
  static constexpr const wchar_t* kAside = L"Software\\MireloTestsProxy";

  void Set(const char* name, DWORD type, const void* value, std::size_t size) {
    EXPECT_EQ(::RegSetKeyValueA(aside_, "Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings",
                                name, type, value, static_cast<DWORD>(size)),
              ERROR_SUCCESS);
  }

  HKEY aside_ = nullptr;
};

class HttpOfWindows : public ::testing::Test {
 protected:
  Api::Handle Request(std::uint16_t port, const std::string& verb = "GET") {
    session_ = client_.InternetOpenA("Mirelo", Api::kOpenTypePreconfig);
    client_.InternetSetOptionA(session_, Api::kOptionConnectTimeout, timeout_);
    client_.InternetSetOptionA(session_, Api::kOptionSendTimeout, timeout_);
    client_.InternetSetOptionA(session_, Api::kOptionReceiveTimeout, timeout_);
    const auto connection = client_.InternetConnectA(session_, "127.0.0.1", port, "", "", Api::kServiceHttp);
    return client_.HttpOpenRequestA(connection, verb, "/req?x", "HTTP/1.0", "", Api::kFlagReload);
  }
  std::string Body(Api::Handle request, std::uint32_t piece = 4096) {
    std::string body;
    std::string buffer(piece, '\0');
    std::uint32_t read = 0;
    while (client_.InternetReadFile(request, buffer.data(), piece, read) && read > 0)
      body.append(buffer, 0, read);
    return body;
  }

  std::int32_t timeout_ = 10'000;
  WindowLoop loop_{[](const std::exception_ptr&) { ADD_FAILURE() << "nobody waits"; }};
  WinInetClient client_{loop_};
  Api::Handle session_ = 0;
};

TEST_F(HttpOfWindows, SendsARequestAndReadsItsReply) {
  LoopbackServer server(
      Replying("HTTP/1.0 200 OK\r\nContent-Type: text/plain\r\nContent-Length: 5\r\n\r\nhello"));
  const auto request = Request(server.Port());
  ASSERT_TRUE(client_.HttpSendRequestA(request, "", ""));
  EXPECT_EQ(client_.HttpQueryInfoA(request, Api::kQueryContentType, 64), "text/plain");
  EXPECT_EQ(client_.HttpQueryInfoA(request, Api::kQueryContentLength, 64), "5");
  EXPECT_EQ(client_.HttpQueryInfoA(request, Api::kQueryContentType, 10), std::nullopt) << "too small";
  EXPECT_EQ(client_.HttpQueryInfoA(request, Api::kQueryRequestMethod, 64), "GET");
  EXPECT_EQ(Body(request, 2), "hello");
  EXPECT_EQ(server.Received().find("GET /req?x HTTP/1.0\r\n"), 0U) << server.Received();
  EXPECT_NE(server.Received().find("User-Agent: Mirelo\r\n"), std::string::npos) << server.Received();
  EXPECT_EQ(client_.LastFailure(), Api::Failure::None);
}

TEST_F(HttpOfWindows, SendsABodyBehindItsHeaders) {
  LoopbackServer server([](Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Receive(3);
    peer.Send("HTTP/1.0 200 OK\r\n\r\nok");
  });
  const auto request = Request(server.Port(), "POST");
  ASSERT_TRUE(client_.HttpSendRequestA(request, "X-Of: ours\r\n", "a=b"));
  EXPECT_EQ(Body(request), "ok");
  EXPECT_NE(server.Received().find("X-Of: ours\r\n"), std::string::npos) << server.Received();
  EXPECT_TRUE(server.Received().ends_with("\r\n\r\na=b")) << server.Received();
}

TEST_F(HttpOfWindows, GoesOnWithTheLoopWhileItWaits) {
  LoopbackServer slow([](Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Await();
    peer.Send("HTTP/1.0 200 OK\r\n\r\nlate");
  });
  LoopbackServer quick(Replying("HTTP/1.0 200 OK\r\n\r\nquick"));
  std::string nested;
  const auto request = Request(slow.Port());
  loop_.StartTimer(std::chrono::milliseconds(5), [&] {
    const auto inner = Request(quick.Port());
    EXPECT_TRUE(client_.HttpSendRequestA(inner, "", ""));
    nested = Body(inner);
    slow.Go();
  });
  ASSERT_TRUE(client_.HttpSendRequestA(request, "", ""));
  EXPECT_EQ(nested, "quick");
  EXPECT_EQ(Body(request), "late");
}

// A proxy is told of the port that is meant, which need not be free on this machine.
TEST_F(HttpOfWindows, AsksAtThePortOfHttpWhereItIsGivenNone) {
  LoopbackServer server(Replying("HTTP/1.0 200 OK\r\n\r\nok"));
  const ThroughAProxy proxy(server.Address());
  session_ = client_.InternetOpenA("Mirelo", Api::kOpenTypePreconfig);
  for (const std::uint16_t port : std::array<std::uint16_t, 2>{0, 8080}) {
    const auto connection =
        client_.InternetConnectA(session_, "quotes.example", port, "", "", Api::kServiceHttp);
    const auto request =
        client_.HttpOpenRequestA(connection, "GET", "/req?x", "HTTP/1.0", "", Api::kFlagReload);
    ASSERT_TRUE(client_.HttpSendRequestA(request, "", "")) << port;
  }
  server.WaitForScripts(2);
  EXPECT_THAT(server.Received(0), AnyOf(StartsWith("GET http://quotes.example/req?x "),
                                        StartsWith("GET http://quotes.example:80/req?x ")));
  EXPECT_THAT(server.Received(1), StartsWith("GET http://quotes.example:8080/req?x "));
}

TEST_F(HttpOfWindows, SaysThatNobodyListens) {
  std::uint16_t port = 0;
  const int bound = LoopbackServer::BoundSocket(port);
  EXPECT_FALSE(client_.HttpSendRequestA(Request(port), "", ""));
  EXPECT_EQ(client_.LastFailure(), Api::Failure::Refused);
  ::close(bound);
}

TEST_F(HttpOfWindows, GivesUpAServerThatIsSilentForTooLong) {
  LoopbackServer server([](Peer& peer) { peer.ReceiveAll(); });
  timeout_ = 50;
  const auto request = Request(server.Port());
  EXPECT_FALSE(client_.HttpSendRequestA(request, "", ""));
  EXPECT_EQ(client_.LastFailure(), Api::Failure::TimedOut);
  EXPECT_FALSE(client_.HttpSendRequestA(request, "", "")) << "it was given up";
  EXPECT_TRUE(client_.InternetCloseHandle(request));
}

TEST_F(HttpOfWindows, GivesUpABodyThatStops) {
  LoopbackServer server([](Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
    peer.ReceiveAll();
  });
  const auto request = Request(server.Port());
  ASSERT_TRUE(client_.HttpSendRequestA(request, "", ""));
  client_.InternetSetOptionA(request, Api::kOptionReceiveTimeout, 50);
  std::string buffer(100, '\0');
  std::uint32_t read = 0;
  bool is_good = true;
  for (int i = 0; i < 3 && is_good; ++i) {
    is_good = client_.InternetReadFile(request, buffer.data(), 100, read);
  }
  EXPECT_FALSE(is_good);
  EXPECT_EQ(read, 0U);
}

// So a client that is patient with a slow QuoteTracker is not given up before its own time.
TEST_F(HttpOfWindows, WaitsAsLongAsItsClientAllowsASingleStep) {
  WinInetClient hasty(loop_, {.head = std::chrono::milliseconds(50)});
  LoopbackServer server([](Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Rest(std::chrono::milliseconds(400));
    peer.Send("HTTP/1.0 200 OK\r\n\r\nlate");
  });
  const auto sent_with = [&](std::int32_t timeout) {
    const auto session = hasty.InternetOpenA("Mirelo", Api::kOpenTypePreconfig);
    for (const auto option :
         {Api::kOptionConnectTimeout, Api::kOptionSendTimeout, Api::kOptionReceiveTimeout}) {
      hasty.InternetSetOptionA(session, option, timeout);
    }
    const auto connection =
        hasty.InternetConnectA(session, "127.0.0.1", server.Port(), "", "", Api::kServiceHttp);
    return hasty.HttpSendRequestA(
        hasty.HttpOpenRequestA(connection, "GET", "/req?x", "HTTP/1.0", "", Api::kFlagReload), "", "");
  };
  EXPECT_TRUE(sent_with(10'000));
  EXPECT_TRUE(sent_with(0)) << "for ever";
  EXPECT_FALSE(sent_with(20)) << "which is less than the whole may take";
}

TEST_F(HttpOfWindows, BreaksOffABodyThatIsTooLong) {
  WinInetClient careful(loop_, {.body = 100'000});
  for (const std::size_t size : {100'000, 100'001}) {
    LoopbackServer server(Replying("HTTP/1.0 200 OK\r\n\r\n" + std::string(size, 'x')));
    const auto session = careful.InternetOpenA("Mirelo", Api::kOpenTypePreconfig);
    const auto connection =
        careful.InternetConnectA(session, "127.0.0.1", server.Port(), "", "", Api::kServiceHttp);
    const auto request =
        careful.HttpOpenRequestA(connection, "GET", "/req?x", "HTTP/1.0", "", Api::kFlagReload);
    ASSERT_TRUE(careful.HttpSendRequestA(request, "", ""));
    std::string buffer(4096, '\0');
    std::uint32_t read = 1;
    std::size_t total = 0;
    bool is_good = true;
    while (is_good && read > 0) {
      is_good = careful.InternetReadFile(request, buffer.data(), 4096, read);
      total += read;
    }
    EXPECT_EQ(is_good, size == 100'000) << size;
    EXPECT_LE(total, 100'000U);
  }
}

TEST_F(HttpOfWindows, KnowsTheFiveTimeouts) {
  const auto session = client_.InternetOpenA(std::nullopt, 0);
  for (const std::uint32_t option : {2U, 5U, 6U, 7U, 8U}) {
    EXPECT_TRUE(client_.InternetSetOptionA(session, option, 9)) << option;
  }
  EXPECT_FALSE(client_.InternetSetOptionA(session, 3, 9));
}

// As cookies of the user's other programs would be.
TEST_F(HttpOfWindows, TakesNoCookies) {
  LoopbackServer server(Replying("HTTP/1.0 200 OK\r\nSet-Cookie: crumb=1; path=/\r\n\r\nok"));
  for (int i = 0; i < 2; ++i) ASSERT_TRUE(client_.HttpSendRequestA(Request(server.Port()), "", ""));
  server.WaitForScripts(2);
  EXPECT_EQ(server.Received(1).find("Cookie"), std::string::npos) << server.Received(1);
}

TEST_F(HttpOfWindows, EndsAWaitWhoseHandleAHandlerCloses) {
  LoopbackServer server([](Peer& peer) { peer.ReceiveAll(); });
  const auto request = Request(server.Port());
  loop_.StartTimer(std::chrono::milliseconds(20), [&] { client_.InternetCloseHandle(session_); });
  EXPECT_FALSE(client_.HttpSendRequestA(request, "", ""));
  EXPECT_EQ(client_.OpenHandles(), 0U);
}

TEST_F(HttpOfWindows, LeavesAWaitInWhichAHandlerFails) {
  LoopbackServer server([](Peer& peer) { peer.ReceiveAll(); });
  const auto request = Request(server.Port());
  loop_.StartTimer(std::chrono::milliseconds(20), [] { throw std::runtime_error("a bad timer"); });
  EXPECT_THROW(client_.HttpSendRequestA(request, "", ""), std::runtime_error);
  EXPECT_TRUE(client_.InternetCloseHandle(session_));
  EXPECT_EQ(client_.OpenHandles(), 0U);
}

TEST_F(HttpOfWindows, RefusesWhatItCannotDo) {
  EXPECT_EQ(client_.InternetOpenA("Mirelo\r\nX: y", 0), 0U);
  const auto session = client_.InternetOpenA(std::nullopt, 0);
  EXPECT_EQ(client_.InternetConnectA(session, "", 80, "", "", Api::kServiceHttp), 0U);
  EXPECT_EQ(client_.InternetConnectA(session, "host", 80, "", "", 1), 0U);
  const auto connection = client_.InternetConnectA(session, "host", 80, "", "", Api::kServiceHttp);
  EXPECT_EQ(client_.HttpOpenRequestA(connection, "GET", "/", "HTTP/1.0", "a\nb", 0), 0U);
  EXPECT_EQ(client_.HttpOpenRequestA(connection, "GET", "/", "HTTP/1.1", "", 0), 0U);
  EXPECT_FALSE(client_.InternetSetOptionA(session, 99, 1));
  EXPECT_FALSE(client_.InternetCloseHandle(12345));
}

}  // namespace
}  // namespace mirelo::windows
