#include "adapters/qt/busy_internet.h"

#include <QCursor>

#include <cstdint>
#include <optional>
#include <string>

#include "adapters/curl/curl_internet.h"
#include "qt/gui_test.h"
#include "support/loopback_server.h"

namespace mirelo::qt {
namespace {

using host::WinInetApi;
using testing::LoopbackServer;

class BusyCursor : public GuiTest {
 protected:
  static bool IsBusy() {
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor != nullptr && cursor->shape() == Qt::BusyCursor;
  }
  WinInetApi::Handle OpenRequest(std::uint16_t port) {
    const auto session = internet.InternetOpenA(std::nullopt, WinInetApi::kOpenTypePreconfig);
    const auto connection =
        internet.InternetConnectA(session, "127.0.0.1", port, "", "", WinInetApi::kServiceHttp);
    return internet.HttpOpenRequestA(connection, "GET", "/", "HTTP/1.0", "", WinInetApi::kFlagReload);
  }

  curl::CurlInternet plain{loop};
  BusyInternet internet{plain};
};

TEST_F(BusyCursor, ShowsWhileATransferWaitsAndTheLoopGoesOn) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Await();
    peer.Send("HTTP/1.0 200 OK\r\nContent-Length: 4\r\nContent-Type: text/plain\r\n\r\nbody");
  });
  bool busy = false;
  loop.StartTimer(QtLoop::Milliseconds(1), [&] {
    busy = IsBusy();
    server.Go();
  });
  const auto request = OpenRequest(server.Port());
  EXPECT_FALSE(IsBusy());
  ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
  EXPECT_TRUE(busy);
  EXPECT_FALSE(IsBusy());
  EXPECT_EQ(internet.HttpQueryInfoA(request, WinInetApi::kQueryContentLength, 100), "4");
  char body[10] = {};
  std::uint32_t read = 0;
  EXPECT_TRUE(internet.InternetReadFile(request, body, sizeof body, read));
  EXPECT_EQ(std::string(body, read), "body");
  EXPECT_FALSE(IsBusy());
  EXPECT_TRUE(internet.InternetCloseHandle(request));
}

TEST_F(BusyCursor, GoesAwayWhenTheServerCannotBeReached) {
  const testing::RefusingPort nobody;
  EXPECT_FALSE(internet.HttpSendRequestA(OpenRequest(nobody.Port()), "", ""));
  EXPECT_FALSE(IsBusy());
}

}  // namespace
}  // namespace mirelo::qt
