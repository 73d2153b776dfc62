#include <cstdint>
#include <string>

#include "http/http_machine.h"

namespace mirelo::testing {
namespace {

class Redirects : public HttpMachine {};

TEST_F(Redirects, AreFollowed) {
  LoopbackServer server(RedirectThenReply("302 Found\r\nContent-Type: no\r\nLocation: /other?a b"));
  LocalTransfer transfer(server.Port());
  transfer.Execute();
  EXPECT_EQ(transfer.states, kGoodPath);
  EXPECT_EQ(transfer.Response(), "quote");
  EXPECT_EQ(transfer.ContentType(), "a/b");
  EXPECT_EQ(FirstLine(server.Received(1)).substr(0, 11), "GET /other?");
  EXPECT_EQ(transfer.Resource(), "/req?x");
}

TEST_F(Redirects, LeadToAnotherServerWithoutWhatOnlyTheFirstMayKnow) {
  LoopbackServer other(Reply("HTTP/1.0 200 OK\r\n\r\nquote"));
  LoopbackServer server(Reply("HTTP/1.0 301 Moved\r\nLocation: http://" + other.Address() + "/new\r\n\r\n"));
  LocalTransfer transfer(server.Port());
  transfer.UserName("jo");
  transfer.Password("secret");
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "quote");
  EXPECT_EQ(other.Received(), "GET /new HTTP/1.0\r\nHost: " + other.Address() + "\r\n\r\n");
}

TEST_F(Redirects, DoNotWaitForTheBodyOfTheReplyThatRedirects) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    if (peer.Index() > 0) {
      peer.Send("HTTP/1.0 200 OK\r\n\r\nquote");
      return;
    }
    peer.Send("HTTP/1.0 302 Found\r\nLocation: /new\r\n\r\nand on");
    peer.ReceiveAll();  // until the client closes
  });
  LocalTransfer transfer(server.Port());
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "quote");
}

TEST_F(Redirects, TurnAFormIntoAQuestion) {
  for (const std::string status : {"301", "302", "303"}) {
    SCOPED_TRACE(status);
    LoopbackServer server([&](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      if (peer.Index() == 0) {
        EXPECT_EQ(peer.Receive(3), "a=1");
      }
      peer.Send(peer.Index() == 0 ? "HTTP/1.0 " + status + " x\r\nLocation: /new\r\n\r\n"
                                  : std::string("HTTP/1.0 200 OK\r\n\r\nquote"));
    });
    LocalTransfer transfer(server.Port());
    transfer.Method("POST");
    transfer.PostQuery("a=1");
    transfer.Execute();
    EXPECT_EQ(transfer.Response(), "quote");
    EXPECT_EQ(FirstLine(server.Received(1)), "GET /new HTTP/1.0");
  }
}

}  // namespace
}  // namespace mirelo::testing
