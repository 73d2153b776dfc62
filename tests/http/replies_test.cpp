#include <cstdint>
#include <string>
#include <vector>

#include "http/http_machine.h"
#include "http/reply_cases.h"
#include "support/error_number.h"

namespace mirelo::testing {
namespace {

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

INSTANTIATE_TEST_SUITE_P(Table, Replies, ::testing::ValuesIn(kReplies), kReplyName);
#ifndef _WIN32
// WinINet has rules of its own for these.
INSTANTIATE_TEST_SUITE_P(AgainstTheRules, Replies, ::testing::ValuesIn(kRepliesAgainstTheRules), kReplyName);
INSTANTIATE_TEST_SUITE_P(Endless, Replies, ::testing::ValuesIn(kEndlessReplies), kReplyName);
#endif

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
