#include "adapters/curl/redirect.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "http/http_machine.h"

namespace mirelo::testing {
namespace {

class RedirectsOfLibcurl : public HttpMachine {};

TEST_F(RedirectsOfLibcurl, TurnAFormIntoAQuestionUnlessTheyForbidIt) {
  const struct {
    std::string status, verb;
    std::string sent_verb;
    bool sends_body;
  } cases[] = {
      {"301", "POST", "GET", false}, {"302", "POST", "GET", false}, {"303", "POST", "GET", false},
      {"303", "PUT", "GET", false},  {"301", "PUT", "PUT", true},   {"307", "POST", "POST", true},
      {"308", "POST", "POST", true},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.status + " " + each.verb);
    LoopbackServer server([&](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      if (peer.Index() == 0 || each.sends_body) {
        EXPECT_EQ(peer.Receive(3), "a=1");
      }
      peer.Send(peer.Index() == 0 ? "HTTP/1.0 " + each.status + " x\r\nLocation: /new\r\n\r\n"
                                  : std::string("HTTP/1.0 200 OK\r\n\r\nquote"));
    });
    LocalTransfer transfer(server.Port());
    transfer.Method(each.verb);
    transfer.PostQuery("a=1");
    transfer.Execute();
    EXPECT_EQ(transfer.Response(), "quote");
    EXPECT_EQ(transfer.Method(), each.sent_verb);
    EXPECT_EQ(FirstLine(server.Received(1)), each.sent_verb + " /new HTTP/1.0");
    EXPECT_EQ(server.Received(1).find("Content-") != std::string::npos, each.sends_body);
  }
}

TEST_F(RedirectsOfLibcurl, EndAfterTen) {
  LoopbackServer ten(RedirectThenReply("302 Found\r\nLocation: /new", 10));
  LocalTransfer good(ten.Port());
  good.Execute();
  EXPECT_EQ(good.Response(), "quote");

  LoopbackServer eleven(RedirectThenReply("302 Found\r\nLocation: /new", 11));
  LocalTransfer bad(eleven.Port());
  bad.Execute();
  EXPECT_EQ(bad.states, kSendFailed);
  EXPECT_EQ(eleven.Connections(), 11u);
}

TEST_F(RedirectsOfLibcurl, FailWhereTheyCannotBeFollowed) {
  const RefusingPort refusing;
  for (const std::string location :
       {"ftp://127.0.0.1/a", "file:///etc/passwd", "http://", "http://a b/", "http://127.0.0.1:99999/"}) {
    SCOPED_TRACE(location);
    LoopbackServer server(RedirectThenReply("302 Found\r\nLocation: " + location));
    LocalTransfer transfer(server.Port());
    transfer.Execute();
    EXPECT_EQ(transfer.states, kSendFailed);
  }
  LoopbackServer server(RedirectThenReply("302 Found\r\nLocation: http://" + refusing.Address()));
  LocalTransfer transfer(server.Port());
  transfer.Execute();
  EXPECT_EQ(transfer.states, kSendFailed);
}

TEST(Redirected, ResolvesAgainstWhereTheRequestWent) {
  const curl::Destination from{"http://127.0.0.1:16239", "/a/b?c"};
  const struct {
    std::string location, origin, target;
  } cases[] = {
      {"/x", "http://127.0.0.1:16239", "/x"},           {"x?y", "http://127.0.0.1:16239", "/a/x?y"},
      {"../x", "http://127.0.0.1:16239", "/x"},         {"?y", "http://127.0.0.1:16239", "/a/b?y"},
      {"//other/x", "http://other:80", "/x"},           {"http://other:81", "http://other:81", "/"},
      {"https://other/x#y", "https://other:443", "/x"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.location);
    const auto next = curl::Redirected(from, each.location);
    ASSERT_TRUE(next.has_value());
    EXPECT_EQ(next->origin, each.origin);
    EXPECT_EQ(next->target, each.target);
  }
}

TEST(HttpOrigin, NamesTheServerAndItsPort) {
  EXPECT_EQ(curl::HttpOrigin("127.0.0.1", 16239), "http://127.0.0.1:16239");
  EXPECT_EQ(curl::HttpOrigin("localhost", 0), "http://localhost:80");
  EXPECT_EQ(curl::HttpOrigin("::1", 65535), "http://[::1]:65535");
  EXPECT_EQ(curl::HttpOrigin("[::1]", 1), "http://[::1]:1");
  EXPECT_EQ(curl::HttpOrigin("a/b", 1), "");
}

}  // namespace
}  // namespace mirelo::testing
