#include <string>

#include "http/http_machine.h"

namespace mirelo::testing {
namespace {

class SentRequest : public HttpMachine {
 protected:
  // A server that replies when it has the whole request, whose end is `end`.
  static LoopbackServer::Script ReplyBehind(std::string end) {
    return [end = std::move(end)](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil(end);
      peer.Send("HTTP/1.0 200 OK\r\n\r\nOK");
    };
  }
  static std::string HostLine(const LoopbackServer& server) { return "Host: " + server.Address() + "\r\n"; }
};

TEST_F(SentRequest, HasNothingButWhatItNeeds) {
  LoopbackServer server(ReplyBehind("\r\n\r\n"));
  LocalTransfer transfer(server.Port(), "/req?GetLastQuote(MSFT,IBM)");
  transfer.Execute();
  EXPECT_EQ(server.Received(), "GET /req?GetLastQuote(MSFT,IBM) HTTP/1.0\r\n" + HostLine(server) + "\r\n");
}

TEST_F(SentRequest, CarriesABodyWithItsLengthAndType) {
  LoopbackServer server(ReplyBehind("a=1&b=2"));
  LocalTransfer transfer(server.Port());
  transfer.Method("POST");
  transfer.PostQuery("a=1&b=2");
  transfer.Execute();
  EXPECT_EQ(InOrder(server.Received()),
            InOrder("POST /req?x HTTP/1.0\r\n" + HostLine(server) +
                    "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: 7\r\n\r\n"
                    "a=1&b=2"));
  EXPECT_EQ(transfer.states, kGoodPath);
}

TEST_F(SentRequest, BehindOneWithABodyCarriesNone) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    const std::string head = peer.ReceiveUntil("\r\n\r\n");
    if (head.starts_with("POST")) peer.ReceiveUntil("a=1");
    peer.Send("HTTP/1.0 200 OK\r\n\r\nOK");
  });
  LocalTransfer transfer(server.Port());
  transfer.Method("POST");
  transfer.PostQuery("a=1");
  transfer.Execute();
  transfer.Method("GET");
  transfer.PostQuery("");
  transfer.Execute();
  EXPECT_EQ(server.Received(1), "GET /req?x HTTP/1.0\r\n" + HostLine(server) + "\r\n");
}

TEST_F(SentRequest, CarriesItsBodyWhateverTheVerb) {
  for (const std::string verb : {"GET", "PUT", "QUOTE"}) {
    SCOPED_TRACE(verb);
    LoopbackServer server(ReplyBehind("a=1"));
    LocalTransfer transfer(server.Port());
    transfer.Method(verb);
    transfer.PostQuery("a=1");
    transfer.Execute();
    EXPECT_TRUE(server.Received().starts_with(verb + " /req?x HTTP/1.0\r\n")) << server.Received();
    EXPECT_NE(server.Received().find("\r\nContent-Length: 3\r\n"), std::string::npos) << server.Received();
    EXPECT_TRUE(server.Received().ends_with("\r\n\r\na=1")) << server.Received();
    EXPECT_EQ(transfer.Method(), verb);
  }
}

TEST_F(SentRequest, IsAGetWithoutAVerb) {
  LoopbackServer server(ReplyBehind("\r\n\r\n"));
  LocalTransfer transfer(server.Port());
  transfer.Method("");
  transfer.Execute();
  EXPECT_EQ(server.Received(), "GET /req?x HTTP/1.0\r\n" + HostLine(server) + "\r\n");
  EXPECT_EQ(transfer.Method(), "GET");
}

TEST_F(SentRequest, SpeaksNoOtherServiceOrVersion) {
  const auto session = internet.InternetOpenA(std::nullopt, 0);
  for (const std::uint32_t service : {0u, 1u, 2u, 4u}) {
    SCOPED_TRACE(service);
    EXPECT_EQ(internet.InternetConnectA(session, "127.0.0.1", 1, "", "", service), 0u);
  }
  const auto connection = internet.InternetConnectA(session, "127.0.0.1", 1, "", "", 3);
  for (const std::string version : {"", "HTTP/1.1", "HTTP/0.9", "http/1.0"}) {
    SCOPED_TRACE(version);
    EXPECT_EQ(internet.HttpOpenRequestA(connection, "GET", "/", version, "", 0), 0u);
  }
}

TEST_F(SentRequest, TellsNoTypeOfABodyUnlessItIsGiven) {
  LoopbackServer server(ReplyBehind("a=1"));
  const auto session = internet.InternetOpenA(std::nullopt, 0);
  const auto connection = internet.InternetConnectA(session, "127.0.0.1", server.Port(), "", "", 3);
  const auto request = internet.HttpOpenRequestA(connection, "POST", "/", "HTTP/1.0", "", 0);
  EXPECT_TRUE(internet.HttpSendRequestA(request, "", "a=1"));
  EXPECT_EQ(InOrder(server.Received()),
            InOrder("POST / HTTP/1.0\r\n" + HostLine(server) + "Content-Length: 3\r\n\r\na=1"));
}

TEST_F(SentRequest, CarriesBytesOfTheAnsiCodePage) {
  LoopbackServer server(ReplyBehind("\x80"));
  LocalTransfer transfer(server.Port(), "/req?caf\u00E9");
  transfer.PostQuery("\u20AC");
  transfer.Execute();
  EXPECT_TRUE(server.Received().starts_with("GET /req?caf\xE9 HTTP/1.0\r\n")) << server.Received();
  EXPECT_NE(server.Received().find("\r\nContent-Length: 1\r\n"), std::string::npos) << server.Received();
  EXPECT_TRUE(server.Received().ends_with("\r\n\r\n\x80")) << server.Received();
}

TEST_F(SentRequest, CarriesALongBodyWhole) {
  const std::string body = std::string(3'000'000, 'x') + "end";
  LoopbackServer server(ReplyBehind("end"));
  LocalTransfer transfer(server.Port());
  transfer.Method("POST");
  transfer.PostQuery(body);
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "OK");
  EXPECT_TRUE(server.Received().ends_with(body));
}

TEST_F(SentRequest, TellsTheAgentAndTheRefererOnlyWhenTheyAreSet) {
  LoopbackServer server(ReplyBehind("\r\n\r\n"));
  LocalTransfer full(server.Port());
  full.AgentName("Quotes/1");
  full.Referer("http://a/");
  full.Execute();
  const std::string sent = server.Received(0);
  EXPECT_NE(sent.find("\r\nUser-Agent: Quotes/1\r\n"), std::string::npos) << sent;
  EXPECT_NE(sent.find("\r\nReferer: http://a/\r\n"), std::string::npos) << sent;

  LocalTransfer bare(server.Port());
  bare.Execute();
  EXPECT_EQ(server.Received(1), "GET /req?x HTTP/1.0\r\n" + HostLine(server) + "\r\n");
}

TEST_F(SentRequest, GoesToItsServerAlsoBehindOneToAnother) {
  LoopbackServer first(ReplyBehind("\r\n\r\n"));
  LoopbackServer second(ReplyBehind("\r\n\r\n"));
  for (const std::uint16_t port : {first.Port(), second.Port(), first.Port(), first.Port()}) {
    LocalTransfer(port).Execute();
  }
  EXPECT_EQ(first.Received(2), "GET /req?x HTTP/1.0\r\n" + HostLine(first) + "\r\n");
  EXPECT_EQ(second.Received(0), "GET /req?x HTTP/1.0\r\n" + HostLine(second) + "\r\n");
}

TEST_F(SentRequest, NamesItsServerAlsoBehindOneToAnotherNameAtThatPort) {
  LoopbackServer server(ReplyBehind("\r\n\r\n"));
  for (const std::string name : {"127.0.0.1", "localhost", "127.0.0.1"}) {
    SCOPED_TRACE(name);
    const std::size_t connection = server.Connections();
    LocalTransfer transfer(server.Port());
    transfer.HostName(name);
    transfer.Execute();
    EXPECT_EQ(server.Received(connection),
              "GET /req?x HTTP/1.0\r\nHost: " + name + ":" + std::to_string(server.Port()) + "\r\n\r\n");
  }
}

TEST_F(SentRequest, TurnsBlanksOfTheQueryIntoPercentSignsAndKeepsTheRest) {
  const struct {
    std::string resource, sent;
  } cases[] = {
      {"/req?a b c", "/req?a%20b%20c"},
      {"/req?100%", "/req?100%"},
      {"/req?a#b", "/req?a#b"},
      {"req?a", "/req?a"},
      {"", "/"},
      {"/a b/../c d?e", "/c%20d?e"},
      {"/req?a\tb ", "/req?ab"},
      {"/a\\b", "/a%5Cb"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.resource);
    LoopbackServer server(ReplyBehind("\r\n\r\n"));
    LocalTransfer transfer(server.Port(), each.resource);
    transfer.Execute();
    EXPECT_TRUE(server.Received().starts_with("GET " + each.sent + " HTTP/1.0\r\n")) << server.Received();
  }
}

TEST_F(SentRequest, TakesNoLineFromAResourceThatIsTooLongToBecomeCanonical) {
  const std::string resource = "/req?" + std::string(5000, 'x') + "\r\nInjected: 1";
  LoopbackServer server(ReplyBehind("\r\n\r\n"));
  LocalTransfer transfer(server.Port(), resource);
  transfer.Execute();
  EXPECT_EQ(transfer.Resource(), resource);
  EXPECT_NE(server.Received().find("x%0D%0AInjected:%201 HTTP/1.0\r\n"), std::string::npos)
      << server.Received();
}

TEST_F(SentRequest, IsRefusedWhenAPartOfItWouldBreakItsLine) {
  LoopbackServer server(ReplyBehind("\r\n\r\n"));
  const struct {
    std::string agent, verb, referer;
    std::vector<std::int32_t> states;
  } cases[] = {
      {"a\r\nb", "GET", "", {2}},
      {"", "GET /x", "", {1, 3, 5}},
      {"", "GET\n", "", {1, 3, 5}},
      {"", "GET", "a\nb", {1, 3, 5}},
  };
  for (const auto& each : cases) {
    LocalTransfer transfer(server.Port());
    transfer.AgentName(each.agent);
    transfer.Method(each.verb);
    transfer.Referer(each.referer);
    transfer.Execute();
    EXPECT_EQ(transfer.states, each.states);
  }
  EXPECT_EQ(server.Connections(), 0u);
}

TEST_F(SentRequest, FindsAServerByItsName) {
  LoopbackServer server(ReplyBehind("\r\n\r\n"));
  LocalTransfer transfer(server.Port());
  transfer.HostName("localhost");
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "OK");
}

TEST_F(SentRequest, CannotGoToWhatIsNoName) {
  for (const std::string name : {"a b", "127.0.0.1/x", "me@127.0.0.1", "127.0.0.1:80:80"}) {
    SCOPED_TRACE(name);
    LocalTransfer transfer(1);
    transfer.HostName(name);
    transfer.Execute();
    EXPECT_EQ(transfer.states, kSendFailed);
  }
  LocalTransfer nowhere(1);
  nowhere.HostName("");
  nowhere.Execute();
  EXPECT_EQ(nowhere.states, (std::vector<std::int32_t>{1, 4}));
}

}  // namespace
}  // namespace mirelo::testing
