// Replies that are larger, or take longer, than any in order.

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "http/http_machine.h"
#include "support/observed_loop.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;

const std::string kEndlessStatus = "HTTP/1.0 200 OK\r\n";

class Limited : public ::testing::Test {
 protected:
  using Clock = std::chrono::steady_clock;

  static constexpr curl::Limits kLimits{.head = 8 << 10, .body = 2 << 20, .redirects = 3};

  Limited() {
    host.Use(loop).Use(clock).Use(internet);
    internet.BrokenOff.Subscribe([this](const std::string& text) { told.push_back(text); });
  }

  // The script of a server that begins so and goes on with the same for ever.
  static LoopbackServer::Script Endless(std::string start, std::string more) {
    return [=](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      peer.Send(start);
      while (peer.Send(more)) {
      }
    };
  }
  // What a transfer of this server's reply ended as.
  std::vector<std::int32_t> StatesOf(const LoopbackServer& server) {
    LocalTransfer transfer(server.Port());
    transfer.Execute();
    response = transfer.Response();
    EXPECT_EQ(internet.OpenHandles(), 0u);
    return transfer.states;
  }
  std::string Told(const LoopbackServer& server, const std::string& reason) {
    return "The reply of http://" + server.Address() + " was broken off: " + reason;
  }

  WithoutProxies without_proxies;
  Clock::duration ahead{};  // of the machine's time
  std::function<Clock::time_point()> now = [this] { return Clock::now() + ahead; };
  poll::PollLoop loop{now};
  ObservedLoop observed{loop};
  curl::CurlInternet internet{observed, now, kLimits};
  ManualClock clock;
  TestHost host;
  host::HostScope scope{host};
  std::vector<std::string> told;
  std::string response;
};

// --- Size ------------------------------------------------------------------------------------------------

struct EndlessCase {
  std::string name;
  std::string start, more;
  std::string reason;
};

void PrintTo(const EndlessCase& each, std::ostream* out) { *out << each.name; }

std::string Repeated(const std::string& text) {
  std::string result;
  for (int i = 0; i < 1000; ++i) result += text;
  return result;
}

const std::string kTooLarge = "it is larger than 2 MiB";
const std::string kTooMuchHead = "its headers are larger than 8 KiB";
const std::string kChunked = kEndlessStatus + "Transfer-Encoding: chunked\r\n\r\n";

const EndlessCase kEndless[] = {
    {"Body", kEndlessStatus + "\r\n", std::string(4096, 'x'), kTooLarge},
    {"AnnouncedBody", kEndlessStatus + "Content-Length: 1073741824\r\n\r\n", std::string(4096, 'x'),
     kTooLarge},
    {"Lines", kEndlessStatus + "\r\nOK", Repeated("\r\n"), kTooLarge},
    {"Chunks", kChunked, Repeated("4\r\n1234\r\n"), kTooLarge},
    {"OneChunk", kChunked + "7fffffff\r\n", std::string(4096, 'x'), kTooLarge},
};

const EndlessCase kEndlessHeads[] = {
    {"HeaderLines", kEndlessStatus, "X: 1\r\n", kTooMuchHead},
    {"FoldedLines", kEndlessStatus + "X: 1\r\n", "\t1\r\n", kTooMuchHead},
    {"EmptyHeaders", kEndlessStatus, ":\r\n", kTooMuchHead},
    {"InterimReplies", "", "HTTP/1.1 100 Continue\r\n\r\n", kTooMuchHead},
    {"InterimRepliesWithFoldedLines", "", "HTTP/1.1 103 x\r\nX:\r\n\t1\r\n\r\n", kTooMuchHead},
};

const EndlessCase kEndlessTrailers[] = {
    {"Trailers", kChunked + "5\r\nquote\r\n0\r\n", "X: 1\r\n", kTooMuchHead},
    {"FoldedTrailers", kChunked + "5\r\nquote\r\n0\r\n", "\t1\r\n", kTooMuchHead},
};

constexpr auto kEndlessName = [](const auto& info) { return info.param.name; };

class EndlessReplies : public Limited, public ::testing::WithParamInterface<EndlessCase> {};

TEST_P(EndlessReplies, FailWhereTheWholeReplyIsWaitedFor) {
  internet.WaitForWholeReplies();
  LoopbackServer server(Endless(GetParam().start, GetParam().more));
  EXPECT_EQ(StatesOf(server), kSendFailed);
  EXPECT_EQ(response, "");
  EXPECT_THAT(told, ElementsAre(Told(server, GetParam().reason)));
  server.WaitForScripts(1);  // the connection is closed
}

INSTANTIATE_TEST_SUITE_P(Bodies, EndlessReplies, ::testing::ValuesIn(kEndless), kEndlessName);
INSTANTIATE_TEST_SUITE_P(Heads, EndlessReplies, ::testing::ValuesIn(kEndlessHeads), kEndlessName);
INSTANTIATE_TEST_SUITE_P(Trailers, EndlessReplies, ::testing::ValuesIn(kEndlessTrailers), kEndlessName);

class EndlessBodies : public EndlessReplies {};

TEST_P(EndlessBodies, EndAtTheLimitForWhoReadsThemAsTheyCome) {
  LoopbackServer server(Endless(GetParam().start, GetParam().more));
  EXPECT_EQ(StatesOf(server), kGoodPath);
  EXPECT_GT(response.size(), kLimits.body / 2);
  EXPECT_LE(response.size(), kLimits.body);
  EXPECT_THAT(told, ElementsAre(Told(server, GetParam().reason)));
  server.WaitForScripts(1);
}

INSTANTIATE_TEST_SUITE_P(Table, EndlessBodies, ::testing::ValuesIn(kEndless), kEndlessName);

class EndlessHeads : public EndlessReplies {};

TEST_P(EndlessHeads, FailForWhoReadsThemAsTheyComeToo) {
  LoopbackServer server(Endless(GetParam().start, GetParam().more));
  EXPECT_EQ(StatesOf(server), kSendFailed);
  EXPECT_THAT(told, ElementsAre(Told(server, GetParam().reason)));
}

INSTANTIATE_TEST_SUITE_P(Table, EndlessHeads, ::testing::ValuesIn(kEndlessHeads), kEndlessName);

class LargeReply : public Limited {};

// No line comes of it, so its length is known to libcurl alone.
TEST_F(LargeReply, OfOneEndlessLineFails) {
  for (const std::string& start : std::vector<std::string>{
           kEndlessStatus, kEndlessStatus + "X: ", "HTTP/1.0 200 ", kEndlessStatus + "\t"}) {
    SCOPED_TRACE(start);
    LoopbackServer server(Endless(start, std::string(4096, 'x')));
    told.clear();
    EXPECT_EQ(StatesOf(server), kSendFailed);
    internet.WaitForWholeReplies();
    EXPECT_EQ(StatesOf(server), kSendFailed);
    const std::string text = Told(server, "a line of its headers is longer than 100 KiB");
    EXPECT_THAT(told, ElementsAre(text, text));
  }
}

TEST_F(LargeReply, MayComeUpToTheLimit) {
  const std::string body(kLimits.body, 'x');
  LoopbackServer server(Reply(kEndlessStatus + "\r\n" + body));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(StatesOf(server), kGoodPath);
    EXPECT_EQ(response, body);
    internet.WaitForWholeReplies();
  }
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(LargeReply, FailsOneByteAboveTheLimit) {
  internet.WaitForWholeReplies();
  LoopbackServer server(Reply(kEndlessStatus + "\r\n" + std::string(kLimits.body + 1, 'x')));
  EXPECT_EQ(StatesOf(server), kSendFailed);
}

TEST_F(LargeReply, ThatSaysSoIsNotWaitedFor) {
  internet.WaitForWholeReplies();
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send(kEndlessStatus + "Content-Length: " + std::to_string(kLimits.body + 1) + "\r\n\r\n");
    peer.ReceiveAll();  // until the client closes
  });
  EXPECT_EQ(StatesOf(server), kSendFailed);
  EXPECT_THAT(told, ElementsAre(Told(server, kTooLarge)));
}

TEST_F(LargeReply, MayBeSpokenOfInOneWithoutABody) {
  internet.WaitForWholeReplies();
  LoopbackServer server(Reply(kEndlessStatus + "Content-Length: 1073741824\r\n\r\n"));
  LocalTransfer transfer(server.Port());
  transfer.Method("HEAD");
  transfer.Execute();
  EXPECT_EQ(transfer.states, kGoodPath);
}

TEST_F(LargeReply, IsToldOfOnceAndForEach) {
  LoopbackServer server(Endless(kEndlessStatus + "\r\n", std::string(4096, 'x')));
  StatesOf(server);
  StatesOf(server);
  const std::string text = Told(server, kTooLarge);
  EXPECT_THAT(told, ElementsAre(text, text));
}

TEST_F(LargeReply, IsToldOfInALoopOfRedirects) {
  LoopbackServer server(Reply("HTTP/1.0 302 Found\r\nLocation: /again\r\n\r\n"));
  EXPECT_EQ(StatesOf(server), kSendFailed);
  EXPECT_THAT(told, ElementsAre(Told(server, "it leads on to another address more than 3 times")));
  EXPECT_EQ(server.Connections(), 4u);
}

// --- Time ------------------------------------------------------------------------------------------------

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

INSTANTIATE_TEST_SUITE_P(Table, Drips, ::testing::ValuesIn(kDrips), kEndlessName);

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

// --- Whole replies -------------------------------------------------------------------------------------

class WholeReply : public Limited {
 protected:
  WholeReply() { internet.WaitForWholeReplies(); }
};

TEST_F(WholeReply, IsTakenInPieces) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    for (const char byte : kEndlessStatus + "Content-Type: a/b\r\nContent-Length: 5\r\n\r\nquote") {
      peer.Await();
      peer.Send({&byte, 1});
    }
  });
  observed.behind_ready = [&](unsigned) { server.Go(); };
  LocalTransfer transfer(server.Port());
  transfer.Execute();
  EXPECT_EQ(transfer.states, kGoodPath);
  EXPECT_EQ(transfer.Response(), "quote");
  EXPECT_EQ(transfer.ContentType(), "a/b");
}

TEST_F(WholeReply, MayBeShortOrNone) {
  for (const std::string& reply : {kEndlessStatus + "Content-Length: 50\r\n\r\n", std::string()}) {
    LoopbackServer server(Reply(reply));
    EXPECT_EQ(StatesOf(server), kGoodPath);
    EXPECT_EQ(response, "");
  }
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(WholeReply, FailsWhenTheServerSaysNothingMore) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send(kEndlessStatus + "\r\nquo");
    peer.ReceiveAll();
  });
  observed.behind_ready = [&](unsigned ready) {
    if ((ready & host::MessageLoop::kRead) != 0) ahead += std::chrono::minutes(6);
  };
  EXPECT_EQ(StatesOf(server), kSendFailed);
  EXPECT_EQ(response, "");
}

TEST_F(WholeReply, FailsWhenTransfersAreStopped) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send(kEndlessStatus + "\r\nquo");
    peer.ReceiveAll();
  });
  observed.behind_ready = [&](unsigned ready) {
    if ((ready & host::MessageLoop::kRead) != 0) internet.StopTransfers();
  };
  EXPECT_EQ(StatesOf(server), kSendFailed);
  EXPECT_THAT(told, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
