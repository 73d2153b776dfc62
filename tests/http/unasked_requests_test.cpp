// What libcurl is told to do otherwise than the clients of machines do: each request goes straight to its
// server, over a connection of its own, and says who asks.

#include <cstdint>
#include <string>

#include "http/http_machine.h"

namespace mirelo::testing {
namespace {

class UnaskedRequest : public HttpMachine {
 protected:
  static std::string HostLine(const LoopbackServer& server) { return "Host: " + server.Address() + "\r\n"; }
};

TEST_F(UnaskedRequest, TellsTheUserAtOnce) {
  LoopbackServer server(Reply("HTTP/1.0 200 OK\r\n\r\nOK"));
  LocalTransfer full(server.Port());
  full.UserName("jo");
  full.Password("secret");
  full.Execute();
  EXPECT_EQ(server.Received(0),
            "GET /req?x HTTP/1.0\r\n" + HostLine(server) + "Authorization: Basic am86c2VjcmV0\r\n\r\n");

  LocalTransfer without_password(server.Port());
  without_password.UserName("jo");
  without_password.Execute();
  EXPECT_EQ(server.Received(1),
            "GET /req?x HTTP/1.0\r\n" + HostLine(server) + "Authorization: Basic am86\r\n\r\n");

  LocalTransfer bare(server.Port());
  bare.Execute();
  EXPECT_EQ(server.Received(2), "GET /req?x HTTP/1.0\r\n" + HostLine(server) + "\r\n");
}

// A server may refuse the user, and the next transfer has nothing to do with that.
TEST_F(UnaskedRequest, TellsTheUserAlsoBehindOneThatWasRefused) {
  for (const std::string challenge :
       {"Basic realm=\"quotes\"", "Digest realm=\"quotes\", nonce=\"7\"", "Negotiate", "Other"}) {
    SCOPED_TRACE(challenge);
    LoopbackServer server([&](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      peer.Send("HTTP/1.0 401 Unauthorized\r\nWWW-Authenticate: " + challenge + "\r\n\r\nno");
    });
    for (const std::size_t connection : {0u, 1u}) {
      LocalTransfer transfer(server.Port());
      transfer.UserName("jo");
      transfer.Password("secret");
      transfer.Execute();
      EXPECT_EQ(transfer.Response(), "no");
      EXPECT_EQ(server.Received(connection),
                "GET /req?x HTTP/1.0\r\n" + HostLine(server) + "Authorization: Basic am86c2VjcmV0\r\n\r\n");
    }
    EXPECT_EQ(server.Connections(), 2u);
  }
}

TEST_F(UnaskedRequest, GoesOverAConnectionOfItsOwn) {
  for (const std::string head_and_body :
       {"Content-Length: 2\r\n\r\nOK", "Transfer-Encoding: chunked\r\n\r\n2\r\nOK\r\n0\r\n\r\n"}) {
    SCOPED_TRACE(head_and_body);
    LoopbackServer server([&](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      peer.Send("HTTP/1.1 200 OK\r\nConnection: keep-alive\r\n" + head_and_body);
      EXPECT_EQ(peer.ReceiveAll(), "");  // until the client closes
    });
    for (int i = 0; i < 2; ++i) {
      LocalTransfer transfer(server.Port());
      transfer.Execute();
      EXPECT_EQ(transfer.Response(), "OK");
    }
    server.WaitForScripts(2);
    EXPECT_EQ(server.Connections(), 2u);
  }
}

TEST_F(UnaskedRequest, GoesToNoProxyThatTheEnvironmentNames) {
  const RefusingPort proxy;
  for (const char* const name : {"http_proxy", "all_proxy", "ALL_PROXY"}) {
    SCOPED_TRACE(name);
    const EnvironmentVariable variable(name, ("http://" + proxy.Address()).c_str());
    LoopbackServer server(Reply("HTTP/1.0 200 OK\r\n\r\nOK"));
    LocalTransfer transfer(server.Port());
    transfer.Execute();
    EXPECT_EQ(transfer.Response(), "OK");
  }
}

}  // namespace
}  // namespace mirelo::testing
