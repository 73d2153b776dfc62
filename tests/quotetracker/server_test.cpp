#include "quotetracker/server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "support/tcp_client.h"

namespace mirelo::quotetracker {
namespace {

using testing::BodyOf;
using ::testing::ElementsAre;
using testing::HttpGet;
using ::testing::StartsWith;

TEST(Server, AnswersARequestWithHeadAndBodyAndCloses) {
  Server server;
  EXPECT_EQ(HttpGet(server.HttpPort(), "/req?EnumPorts()"),
            "HTTP/1.0 200 OK\r\n"
            "Content-Type: text/plain\r\n"
            "Content-Length: 8\r\n"
            "\r\n"
            "OK\r\nMain");
}

TEST(Server, TakesNewSymbolsIntoTheCurrentPortfolio) {
  Server server;
  EXPECT_EQ(BodyOf(HttpGet(server.HttpPort(), "/req?AddStocksToPort(CURRENT,ORCL,msft,SAP)")), "OK");
  EXPECT_EQ(BodyOf(HttpGet(server.HttpPort(), "/req?EnumPortSymbols(Main)")),
            "OK\r\nMSFT,IBM,GE,INTC,CSCO,ORCL,SAP");
  ASSERT_EQ(server.PortfoliosNow().size(), 1U);
  EXPECT_THAT(server.PortfoliosNow()[0].symbols,
              ElementsAre("MSFT", "IBM", "GE", "INTC", "CSCO", "ORCL", "SAP"));
}

TEST(Server, RemembersWhatItWasAskedFor) {
  Server server;
  HttpGet(server.HttpPort(), "/req?EnumPorts()");
  HttpGet(server.HttpPort(), "/req?GetLastQuote(A,B)");
  EXPECT_THAT(server.Requests(), ElementsAre("/req?EnumPorts()", "/req?GetLastQuote(A,B)"));
}

TEST(Server, HasAPortOfItsOwnEachTimeItStarts) {
  Server one;
  Server two;
  EXPECT_NE(one.HttpPort(), two.HttpPort());
}

TEST(Server, SaysWhichPortItCannotHave) {
  Server first;
  ServerOptions options;
  options.http_port = first.HttpPort();
  try {
    Server second(std::move(options));
    FAIL() << "two servers on one port";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(),
                StartsWith("cannot listen on 127.0.0.1 port " + std::to_string(first.HttpPort()) + ": "));
  }
}

TEST(Server, EndsWhileClientsAreConnected) {
  auto server = std::make_unique<Server>();
  testing::TcpClient idle(server->HttpPort());
  testing::TcpClient midway(server->HttpPort());
  midway.Send("GET /req?Enum");
  // A later client is served, so both are known to the server by now.
  HttpGet(server->HttpPort(), "/req?EnumPorts()");
  server.reset();
  EXPECT_EQ(idle.ReceiveAll(), "");
  EXPECT_EQ(midway.ReceiveAll(), "");
}

}  // namespace
}  // namespace mirelo::quotetracker
