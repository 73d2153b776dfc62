#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "http/http_machine.h"

namespace mirelo::testing {
namespace {

using host::WinInetApi;

// WinINet in Wine tells no more of a line than 1,440 letters.
#ifdef _WIN32
constexpr std::size_t kLengths[] = {1, 1000};
#else
constexpr std::size_t kLengths[] = {1, 1000, 4094, 4095, 4096};
#endif

// What is asked of a reply goes into a buffer, which must hold it with its terminator.
class QueryInfo : public HttpMachine {
 protected:
  std::uint32_t Sent(std::uint16_t port, const std::string& verb = "GET") {
    const auto session = internet.InternetOpenA(std::nullopt, 0);
    const auto connection =
        internet.InternetConnectA(session, "127.0.0.1", port, "", "", WinInetApi::kServiceHttp);
    const auto request =
        internet.HttpOpenRequestA(connection, verb, "/", "HTTP/1.0", "", WinInetApi::kFlagReload);
    EXPECT_TRUE(internet.HttpSendRequestA(request, "", ""));
    return request;
  }
};

TEST_F(QueryInfo, FitsABufferThatHasRoomForTheTerminator) {
  for (const std::size_t length : kLengths) {
    SCOPED_TRACE(length);
    const std::string type(length, 't'), digits(length, '0'), verb(length, 'V');
    LoopbackServer server(
        Reply("HTTP/1.0 200 OK\r\nContent-Type: " + type + "\r\nContent-Length: " + digits + "\r\n\r\n"));
    const auto request = Sent(server.Port(), verb);
    const struct {
      std::uint32_t level;
      std::string value;
    } cases[] = {
        {WinInetApi::kQueryContentType, type},
        {WinInetApi::kQueryContentLength, digits},
        {WinInetApi::kQueryRequestMethod, verb},
    };
    for (const auto& each : cases) {
      SCOPED_TRACE(each.level);
      const auto capacity = static_cast<std::uint32_t>(length);
      EXPECT_EQ(internet.HttpQueryInfoA(request, each.level, capacity), std::nullopt);
      EXPECT_EQ(internet.HttpQueryInfoA(request, each.level, capacity + 1), each.value);
      const auto fits = length < 4096 ? std::optional(each.value) : std::nullopt;
      EXPECT_EQ(internet.HttpQueryInfoA(request, each.level, 4096), fits);
    }
  }
}

#ifndef _WIN32
TEST_F(QueryInfo, ThatDoesNotFitLeavesTheTransfersOwn) {
  for (const std::size_t length : {4094u, 4095u, 4096u}) {
    SCOPED_TRACE(length);
    const std::string type(length, 't'), verb(length, 'V');
    const std::string five = std::string(length - 1, '0') + "5";
    LoopbackServer server(
        Reply("HTTP/1.0 200 OK\r\nContent-Type: " + type + "\r\nContent-Length: " + five + "\r\n\r\nquote"));
    LocalTransfer transfer(server.Port());
    transfer.ContentType("earlier");
    std::int32_t announced = -1;
    transfer.OnProgress.Subscribe([&](float, std::int32_t size, std::int32_t) { announced = size; });
    transfer.Execute();
    const bool fits = length < 4096;
    EXPECT_EQ(transfer.states, kGoodPath);
    EXPECT_EQ(transfer.ContentType(), fits ? type : "earlier");
    EXPECT_EQ(announced, fits ? 5 : 0);
    EXPECT_EQ(transfer.Response(), "quote");
  }
}
#endif

TEST_F(QueryInfo, KnowsNoOtherLevel) {
  LoopbackServer server(Reply("HTTP/1.0 200 OK\r\nContent-Type: a/b\r\n\r\n"));
  const auto request = Sent(server.Port());
  for (const std::uint32_t level : {0u, 2u, 4u, 6u, 44u, 46u}) {
    SCOPED_TRACE(level);
    EXPECT_EQ(internet.HttpQueryInfoA(request, level, 4096), std::nullopt);
  }
}

}  // namespace
}  // namespace mirelo::testing
