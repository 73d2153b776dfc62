// Replies that take longer than any in order.

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "http/limited.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct DripCase {
  std::string name;
  std::string start, drop;
};

void PrintTo(const DripCase& each, std::ostream* out) { *out << each.name; }

const DripCase kDrips[] = {
    {"StatusLine", "HTTP/1.0 200 ", "O"},
    {"Header", kEndlessStatus + "X: ", "1"},
    {"InterimReplies", "", "HTTP/1.1 100 Continue\r\n\r\n"},
    {"Body", kEndlessStatus + "\r\n", "x"},
    {"AnnouncedBody", kEndlessStatus + "Content-Length: 1000\r\n\r\n", "x"},
    {"ChunkSize", kChunked, "0"},
    {"ChunkExtension", kChunked + "5;", "x"},
    {"Trailer", kChunked + "0\r\nX: ", "1"},
    {"Redirects", "HTTP/1.0 302 Found\r\n", "X: 1\r\n"},
};

// Replies of which a drop comes now and then, sooner than any step of them would have to.
class Drips : public Limited, public ::testing::WithParamInterface<DripCase> {
 protected:
  static constexpr std::chrono::seconds kPause{20};

  LoopbackServer::Script Script() {
    return [each = GetParam()](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      peer.Send(each.start);
      do peer.Await();
      while (peer.Send(each.drop));
    };
  }
  // Lets the server go on whenever the client has been handed what it sent.
  void LetItDrip(LoopbackServer& server) {
    observed.behind_ready = [&](unsigned ready) {
      if ((ready & host::MessageLoop::kRead) == 0) return;
      ahead += kPause;
      server.Go();
    };
  }
  void ExpectToldOfTime(const LoopbackServer& server) {
    EXPECT_THAT(told, ElementsAre(Told(server, "it took more than 5 minutes")));
    EXPECT_GE(ahead, std::chrono::minutes(5));
    EXPECT_LT(ahead, std::chrono::minutes(6));
  }
};

TEST_P(Drips, FailInTheEndWhereTheWholeReplyIsWaitedFor) {
  internet.WaitForWholeReplies();
  LoopbackServer server(Script());
  LetItDrip(server);
  if (GetParam().start.empty()) server.Go();
  EXPECT_EQ(StatesOf(server), kSendFailed);
  EXPECT_EQ(response, "");
  ExpectToldOfTime(server);
}

TEST_P(Drips, EndForWhoReadsThemAsTheyComeToo) {
  LoopbackServer server(Script());
  LetItDrip(server);
  if (GetParam().start.empty()) server.Go();
  const auto session = internet.InternetOpenA(std::nullopt, 0);
  for (const std::uint32_t option : {2u, 5u, 6u}) internet.InternetSetOptionA(session, option, 300'000);
  const auto connection = internet.InternetConnectA(session, "127.0.0.1", server.Port(), "", "", 3);
  const auto request = internet.HttpOpenRequestA(connection, "GET", "/", "HTTP/1.0", "", 0);
  bool good = internet.HttpSendRequestA(request, "", "");
  char byte = 0;
  for (std::uint32_t read = 1; good && read > 0;) good = internet.InternetReadFile(request, &byte, 1, read);
  EXPECT_FALSE(good);
  ExpectToldOfTime(server);
}

INSTANTIATE_TEST_SUITE_P(Table, Drips, ::testing::ValuesIn(kDrips),
                         [](const auto& info) { return info.param.name; });

class LongTransfer : public Limited {};

TEST_F(LongTransfer, TakesTheTimeOfItsRedirectsTogether) {
  internet.WaitForWholeReplies();
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 302 Found\r\n");
    peer.Await();
    peer.Send("Location: /again\r\n\r\n");
  });
  observed.behind_ready = [&](unsigned ready) {
    if ((ready & host::MessageLoop::kRead) == 0) return;
    ahead += std::chrono::minutes(2);
    server.Go();
  };
  EXPECT_EQ(StatesOf(server), kSendFailed);
  EXPECT_THAT(told, ElementsAre(Told(server, "it took more than 5 minutes")));
}

TEST_F(LongTransfer, IsToldOfWithItsTimeInWords) {
  struct Case {
    std::chrono::seconds time;
    const char* words;
  };
  for (const auto& [time, words] : {Case{std::chrono::seconds(1), "1 second"},
                                    {std::chrono::seconds(2), "2 seconds"},
                                    {std::chrono::minutes(1), "1 minute"},
                                    {std::chrono::seconds(61), "61 seconds"},
                                    {std::chrono::minutes(2), "2 minutes"}}) {
    curl::CurlInternet brief{observed, now, {.time = time}};
    brief.BrokenOff.Subscribe([this](const std::string& text) { told.push_back(text); });
    host.Use(brief);
    told.clear();
    LoopbackServer server([](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      peer.Send(kEndlessStatus);
      do peer.Await();
      while (peer.Send("X: 1\r\n"));
    });
    observed.behind_ready = [&, pace = std::chrono::milliseconds(time) / 4](unsigned ready) {
      if ((ready & host::MessageLoop::kRead) == 0) return;
      ahead += pace;
      server.Go();
    };
    LocalTransfer transfer(server.Port());
    transfer.TimeoutSec(static_cast<std::int32_t>(time.count()));
    transfer.Execute();
    EXPECT_THAT(told, ElementsAre(Told(server, std::string("it took more than ") + words)));
  }
  observed.behind_ready = nullptr;
  host.Use(internet);
}

TEST_F(LongTransfer, MayTakeAsLongAsItsClientAllowsASingleStep) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    for (const char byte : kEndlessStatus + "\r\n123456789") {
      peer.Await();
      peer.Send({&byte, 1});
    }
  });
  observed.behind_ready = [&](unsigned) {
    ahead += std::chrono::minutes(1);
    server.Go();
  };
  LocalTransfer transfer(server.Port());
  transfer.TimeoutSec(3600);
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "123456789");
  EXPECT_GT(ahead, std::chrono::minutes(20));
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(LongTransfer, IsNotWhatItsReaderTakes) {
  const std::string body(1 << 20, 'x');  // more than waits unread
  LoopbackServer server(Reply(kEndlessStatus + "\r\n" + body));
  LocalTransfer transfer(server.Port());
  transfer.OnProgress.Subscribe([&](float, std::int32_t, std::int32_t) { ahead += std::chrono::minutes(1); });
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), body);
  EXPECT_THAT(told, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
