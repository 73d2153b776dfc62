#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <string>

#include "http/tested_internet.h"
#include "quotetracker/server.h"
#include "snapshot/last_quote_test.h"
#include "support/loopback_server.h"
#include "support/tested_loop.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const ScriptedDesktop::Box kRetrievalError{"Data retrieval error.", 16, "Dovanta2"};

// A facade that talks to a stand-in for QuoteTracker over real sockets.
class LoopbackQuote : public LastQuoteTest {
 protected:
  LoopbackQuote() {
    host.Use(loop).Use(internet);
    Connect(server.HttpPort());
    Show("Ticker,Volume,LastVolume");
  }

  // The setting has 16 bits, so that ports from 32768 on are negative in it.
  static void Connect(std::uint16_t port) { Save("HTTPPort", static_cast<std::int16_t>(port)); }

  quotetracker::Server server;
  TestedLoop loop;
  TestedInternet internet{loop};
};

TEST_F(LoopbackQuote, FillsTheRowOfEachTicker) {
  const Variant result = facade->GetLastQuote(Tickers(163));
  ASSERT_TRUE(result.IsArray());
  EXPECT_EQ(result.AsArray().UBound(1), 163);
  for (std::int32_t row = 1; row <= 163; ++row) {
    EXPECT_EQ(result.AsArray()(row, 1).ToText(), "T" + std::to_string(row));
  }
  EXPECT_THAT(server.Requests(), SizeIs(3));
  EXPECT_EQ(server.Requests().back(), "/req?GetLastQuote(T163)");
  EXPECT_EQ(internet.OpenHandles(), 0u);
}

TEST_F(LoopbackQuote, WorksOutTheVolumeBetweenTwoCalls) {
  TrackVolumes(82);
  const Variant first = facade->GetLastQuote(Tickers(82));
  const Variant second = facade->GetLastQuote(Tickers(82));
  for (std::int32_t row = 1; row <= 82; ++row) {
    SCOPED_TRACE(row);
    EXPECT_EQ(first.AsArray()(row, 3).ToText(), "0");
    EXPECT_EQ(second.AsArray()(row, 3).ToDouble(),
              second.AsArray()(row, 2).ToDouble() - first.AsArray()(row, 2).ToDouble());
  }
}

TEST_F(LoopbackQuote, TellsOfAServerThatHangsUp) {
  server.SetHttpFault(quotetracker::HttpFaultPlan::Parse("drop", 1));
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(Tickers(1))));
  EXPECT_THAT(desktop.boxes, ElementsAre(kRetrievalError));
}

TEST_F(LoopbackQuote, TellsOfAServerThatIsNotThere) {
  const RefusingPort nobody;
  Connect(nobody.Port());
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(Tickers(1))));
  EXPECT_THAT(desktop.boxes, ElementsAre(kRetrievalError));
  EXPECT_THAT(desktop.reports, IsEmpty());
}

// No reply is judged by its status.
TEST_F(LoopbackQuote, TakesAnErrorPageForAReply) {
  const LoopbackServer page([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 404 Not Found\r\n\r\nOK\r\n" + QuoteReplies().Line("A"));
  });
  Connect(page.Port());
  EXPECT_THAT(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1), ElementsAre("A", "1000", "0"));
}

TEST_F(LoopbackQuote, TakesBytesOfTheReplyForTextOfTheAnsiCodePage) {
  const LoopbackServer page([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\nOK\r\n" + QuoteReplies().Line("\x80\xFC"));
  });
  Connect(page.Port());
  EXPECT_EQ(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1)[0], "€ü");
}

// A reply of more than one chunk.
TEST_F(LoopbackQuote, ReadsALongReplyToItsEnd) {
  const std::string pad(100'000, 'x');
  const LoopbackServer page([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\nOK\r\n" + QuoteReplies().Line(pad));
  });
  Connect(page.Port());
  EXPECT_EQ(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1)[0], pad);
}

TEST_F(LoopbackQuote, LetsTheLoopGoOnDuringATransfer) {
  LoopbackServer page([](LoopbackServer::Peer& peer) {
    peer.Await();
    peer.Send("HTTP/1.0 200 OK\r\n\r\nOK\r\n" + QuoteReplies().Line("A"));
  });
  Connect(page.Port());
  loop.StartTimer(std::chrono::milliseconds(1), [&] { page.Go(); });
  EXPECT_TRUE(facade->GetLastQuote(TickersOf({"A"})).IsArray());
}

}  // namespace
}  // namespace mirelo::testing
