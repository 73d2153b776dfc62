// Replies that are larger than any in order.

#include <gmock/gmock.h>

#include <ostream>
#include <string>

#include "http/limited.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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

}  // namespace
}  // namespace mirelo::testing
