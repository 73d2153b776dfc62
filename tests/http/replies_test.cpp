#include <cstdint>
#include <string>
#include <vector>

#include "http/http_machine.h"
#include "support/error_number.h"
#include "support/loop_signal.h"
#include "support/observed_loop.h"

namespace mirelo::testing {
namespace {

struct ReplyCase {
  std::string name;
  std::string bytes;
  std::vector<std::int32_t> states;
  std::string response{};
  std::string content_type{};
  std::int32_t content_length = 0;
};

void PrintTo(const ReplyCase& each, std::ostream* out) { *out << each.name; }

const std::string kOk = "HTTP/1.0 200 OK\r\n";

std::string Repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

const ReplyCase kReplies[] = {
    {"Plain", kOk + "Content-Type: text/plain\r\nContent-Length: 5\r\n\r\nquote", kGoodPath, "quote",
     "text/plain", 5},
    {"WithoutTypeAndLength", kOk + "\r\nquote", kGoodPath, "quote"},
    {"WithoutHeaders", "HTTP/1.1 200\r\n\r\nquote", kGoodPath, "quote"},
    {"LineFeedsOnly", "HTTP/1.0 200 OK\nContent-Length: 5\n\nquote", kGoodPath, "quote", "", 5},
    {"NamesInOtherCase", kOk + "CONTENT-type:text/html \r\ncontent-LENGTH:  5\r\n\r\nquote", kGoodPath,
     "quote", "text/html", 5},
    {"FirstOfTwo", kOk + "Content-Type: a/b\r\nContent-Type: c/d\r\n\r\n", kGoodPath, "", "a/b"},
    {"FoldedLine", kOk + "X: a\r\n Content-Type: no\r\n\r\nquote", kGoodPath, "quote"},
    {"EmptyBody", kOk + "Content-Length: 0\r\n\r\n", kGoodPath, ""},
    {"EmptyBodyWithoutLength", kOk + "\r\n", kGoodPath, ""},
    {"EmptyType", kOk + "Content-Type:\r\n\r\nquote", kGoodPath, "quote"},
    {"EightBitBytes", kOk + "\r\n\x80\xFC\x81", kGoodPath, "\u20AC\u00FC\u0081"},
    {"NulByte", kOk + "\r\n" + std::string("a\0b", 3), kGoodPath, std::string("a\0b", 3)},
    {"NotFoundPage", "HTTP/1.0 404 Not Found\r\n\r\nno such page", kGoodPath, "no such page"},
    {"ServerError", "HTTP/1.0 500 Oops\r\nContent-Length: 4\r\n\r\noops", kGoodPath, "oops", "", 4},
    {"NoContent", "HTTP/1.0 204 No Content\r\n\r\nignored", kGoodPath, ""},
    {"InterimReply", "HTTP/1.1 100 Continue\r\nContent-Type: no\r\n\r\n" + kOk + "\r\nquote", kGoodPath,
     "quote"},
    // The last reply that its connection has in HTTP.
    {"SwitchedProtocol", "HTTP/1.1 101 Switching Protocols\r\n\r\nquote", kGoodPath, "quote"},
    {"Chunks",
     kOk + "Transfer-Encoding: chunked\r\nContent-Length: 2\r\n\r\n3\r\nquo\r\n2\r\nte\r\n0\r\n\r\n",
     kGoodPath, "quote", "", 2},
    {"BrokenChunks", kOk + "Transfer-Encoding: chunked\r\n\r\n3\r\nquo\r\nxyz", kGoodPath, "quo"},
    {"BodyShorterThanAnnounced", kOk + "Content-Length: 50\r\n\r\nquote", kGoodPath, "quote", "", 50},
    {"BodyLongerThanAnnounced", kOk + "Content-Length: 3\r\n\r\nquote", kGoodPath, "quo", "", 3},
    {"NegativeLength", kOk + "Content-Length: -5\r\n\r\nquote", kGoodPath, "quote", "", -5},
    {"LengthThatIsNoNumber", kOk + "Content-Length: many\r\n\r\nquote", kGoodPath, "quote"},
    {"LengthWithMoreBehind", kOk + "Content-Length: 3 bytes\r\n\r\nquote", kGoodPath, "quote", "", 3},
    {"RedirectWithoutAddress", "HTTP/1.0 302 Found\r\n\r\nmoved", kGoodPath, "moved"},
    // A connection that closes before any reply counts as one that sent an empty one.
    {"Nothing", "", kGoodPath, ""},
    {"EndInTheStatusLine", "HTTP/1.0 20", kSendFailed},
    {"EndBehindTheStatusLine", kOk, kSendFailed},
    {"EndInAHeader", kOk + "Content-Ty", kSendFailed},
    {"EndBehindAHeader", kOk + "Content-Type: text/plain\r\n", kSendFailed},
    {"EndBehindAnInterimReply", "HTTP/1.1 100 Continue\r\n\r\n", kSendFailed},
    {"NoStatusLine", "quote\r\nquote\r\n\r\n", kSendFailed},
    {"NoStatusLineNorLineEnd", "quote", kSendFailed},
    {"EmptyStatusLine", "\r\n\r\nquote", kSendFailed},
    {"StatusIsNegative", "HTTP/1.0 -12 OK\r\n\r\nquote", kSendFailed},
    {"StatusIsNoNumber", "HTTP/1.0 abc OK\r\n\r\nquote", kSendFailed},
    {"AnotherProtocol", "SSH-2.0-OpenSSH\r\n", kSendFailed},
    {"BinaryGarbage", std::string("\0\xFF\x16\x03\0\r\n\r\n", 9), kSendFailed},
    {"NulInAHeader", kOk + std::string("X: \0\r\n", 6) + "\r\nquote", kSendFailed},
};

const ReplyCase kEndlessReplies[] = {
    {"EndlessLineInTheHead", kOk + std::string(300'000, 'x') + "\r\n\r\nquote", kSendFailed},
    {"EndlessHead", kOk + Repeated("X: " + std::string(1000, 'x') + "\r\n", 300) + "\r\nquote", kSendFailed},
};

class Replies : public HttpMachine, public ::testing::WithParamInterface<ReplyCase> {};

TEST_P(Replies, EndTheTransferInTheirStateAndHandOverTheirBody) {
  const ReplyCase& expected = GetParam();
  LoopbackServer server(Reply(expected.bytes));
  LocalTransfer transfer(server.Port());
  std::int32_t length = 0;
  transfer.OnProgress.Subscribe(
      [&](float, std::int32_t content_length, std::int32_t) { length = content_length; });
  transfer.Execute();

  EXPECT_EQ(transfer.states, expected.states);
  EXPECT_EQ(transfer.SuccessDone(), expected.states == kGoodPath);
  EXPECT_EQ(transfer.Response(), expected.response);
  EXPECT_EQ(transfer.ContentType(), expected.content_type);
  EXPECT_EQ(length, expected.content_length);
  EXPECT_EQ(internet.OpenHandles(), 0u);
}

constexpr auto kName = [](const auto& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(Table, Replies, ::testing::ValuesIn(kReplies), kName);
INSTANTIATE_TEST_SUITE_P(Endless, Replies, ::testing::ValuesIn(kEndlessReplies), kName);

// A server may send in any pieces, of which the client sees one at a time here.
class RepliesInPieces : public HttpMachine, public ::testing::WithParamInterface<ReplyCase> {
 protected:
  RepliesInPieces() { host.Use(observed_internet); }

  ObservedLoop observed{loop};
  curl::CurlInternet observed_internet{observed};
};

TEST_P(RepliesInPieces, ComeOutTheSameByteByByte) {
  const ReplyCase& expected = GetParam();
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    for (const char byte : expected.bytes) {
      peer.Await();
      peer.Send({&byte, 1});
    }
  });
  observed.behind_ready = [&](unsigned) { server.Go(); };
  LocalTransfer transfer(server.Port());
  transfer.Execute();
  EXPECT_EQ(transfer.states, expected.states);
  EXPECT_EQ(transfer.Response(), expected.response);
}

INSTANTIATE_TEST_SUITE_P(Table, RepliesInPieces, ::testing::ValuesIn(kReplies), kName);

class HeadReply : public HttpMachine {};

TEST_F(HeadReply, HasNoBodyWhateverItAnnounces) {
  for (const std::string body : {"", "a=1"}) {
    SCOPED_TRACE(body);
    LoopbackServer server([&](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      EXPECT_EQ(peer.Receive(body.size()), body);
      peer.Send("HTTP/1.0 200 OK\r\nContent-Length: 5\r\n\r\n");
      peer.ReceiveAll();  // until the client closes
    });
    LocalTransfer transfer(server.Port());
    transfer.Method("HEAD");
    transfer.PostQuery(body);
    transfer.Execute();
    EXPECT_EQ(transfer.states, kGoodPath);
    EXPECT_EQ(transfer.Response(), "");
    EXPECT_EQ(transfer.Method(), "HEAD");
  }
}

class BadReply : public HttpMachine {};

TEST_F(BadReply, WhoseLengthOverflowsIsAnError) {
  for (const std::string length : {"2147483648", "99999999999999999999"}) {
    SCOPED_TRACE(length);
    LoopbackServer server(Reply("HTTP/1.0 200 OK\r\nContent-Length: " + length + "\r\n\r\nquote"));
    LocalTransfer transfer(server.Port());
    EXPECT_EQ(NumberOf([&] { transfer.Execute(); }), ErrorNumber(0x80040064));
    EXPECT_EQ(transfer.states, (std::vector<std::int32_t>{1, 3, 6, 7}));
  }
  EXPECT_EQ(internet.OpenHandles(), 6u);  // they stay open
}

TEST_F(BadReply, OfAConnectionThatIsResetEndsWhereItStood) {
  const struct {
    std::string name, sent;
    std::vector<std::int32_t> states;
    std::string response;
  } cases[] = {
      {"before any of it", "", kGoodPath, ""},
      {"in the status line", "HTT", kSendFailed, ""},
      {"in the head", kOk + "Content-", kSendFailed, ""},
      {"in the body", kOk + "Content-Length: 9\r\n\r\nquo", kGoodPath, "quo"},
  };
  ObservedLoop observed(loop);
  curl::CurlInternet observed_internet(observed);
  host.Use(observed_internet);
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    LoopbackServer* asked_server = nullptr;
    // The client has nothing to do but to wait for the reply when this is handled.
    LoopSignal asked(loop, [&] { asked_server->Go(); });
    LoopbackServer server([&](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      asked.Raise();
      peer.Await();
      if (!each.sent.empty()) {
        peer.Send(each.sent);
        peer.Await();
      }
      peer.Reset();
    });
    asked_server = &server;
    // What was sent has been read before the reset comes, which would otherwise overtake it.
    observed.behind_ready = [&](unsigned ready) {
      if ((ready & host::MessageLoop::kRead) != 0) server.Go();
    };
    LocalTransfer transfer(server.Port());
    transfer.Execute();
    EXPECT_EQ(transfer.states, each.states);
    EXPECT_EQ(transfer.Response(), each.response);
  }
}

TEST_F(BadReply, OfAServerThatHangsUpOnTheRequestCountsAsAnEmptyOne) {
  LoopbackServer server([](LoopbackServer::Peer&) {});
  LocalTransfer transfer(server.Port());
  transfer.Execute();
  EXPECT_EQ(transfer.states, kGoodPath);
  EXPECT_EQ(transfer.Response(), "");
}

TEST_F(BadReply, CannotComeFromAPortThatRefuses) {
  const RefusingPort port;
  LocalTransfer transfer(port.Port());
  transfer.Execute();
  EXPECT_EQ(transfer.states, kSendFailed);
  EXPECT_EQ(internet.OpenHandles(), 0u);
}

TEST_F(BadReply, ThatDoesNotEndCanBeCancelled) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\n");
    while (peer.Send(std::string(4096, 'x'))) {
    }
  });
  LocalTransfer transfer(server.Port());
  transfer.OnProgress.Subscribe([&](float, std::int32_t, std::int32_t read) {
    if (read > 1'000'000) transfer.Cancel();
  });
  transfer.Execute();
  EXPECT_EQ(transfer.states.back(), WinInet::kCancelled);
  EXPECT_EQ(transfer.Response(), "");
  server.WaitForScripts(1);  // the connection is closed
}

}  // namespace
}  // namespace mirelo::testing
