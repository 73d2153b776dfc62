// Replies that are handed over only when all of them has come.

#include <gmock/gmock.h>

#include <chrono>
#include <string>

#include "http/limited.h"

namespace mirelo::testing {
namespace {

using ::testing::IsEmpty;

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
