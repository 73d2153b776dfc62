#include <cstdint>
#include <string>
#include <vector>

#include "dialog/portfolio_test.h"
#include "http/tested_internet.h"
#include "quotetracker/server.h"
#include "support/loopback_server.h"
#include "support/tested_loop.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

quotetracker::ServerOptions TwoPortfolios() {
  quotetracker::ServerOptions options;
  options.portfolios = {{"My Stocks", {"MSFT", "ibm"}}, {"Second", {"GE"}}};
  return options;
}

// The dialog and a stand-in for QuoteTracker, over real sockets.
class TradingPortfolios : public PlainGridTest {
 protected:
  TradingPortfolios() {
    host.Use(its_loop).Use(internet);
    Connect(server.HttpPort());
  }
  // Ports from 32768 on are negative in the 16 bits that a port has.
  void Connect(std::uint16_t port) { form.txtHTTPPort.Text(std::to_string(static_cast<std::int16_t>(port))); }

  quotetracker::Server server{TwoPortfolios()};
  TestedLoop its_loop;
  TestedInternet internet{its_loop};
};

TEST_F(TradingPortfolios, ImportsTheFirstPortfolio) {
  form.ButImport.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(TradingPortfolios, ExportsWhatThePortfolioLacks) {
  Add({"CSCO", "MSFT", "IBM", "ORCL"});
  form.ButExport.UserPress();
  EXPECT_THAT(server.PortfoliosNow()[0].symbols, ElementsAre("MSFT", "ibm", "CSCO", "ORCL"));
  EXPECT_THAT(server.PortfoliosNow()[1].symbols, ElementsAre("GE"));
  EXPECT_THAT(desktop.boxes,
              ElementsAre(ScriptedDesktop::Box{"QouteTracker portfolio updated", 64, "Dovanta2"}));

  form.ButExport.UserPress();
  EXPECT_EQ(desktop.boxes.size(), 1U) << "nothing was left to add";
}

TEST_F(TradingPortfolios, BringsALongListThereAndBack) {
  FG.Rows(301);
  for (std::int32_t row = 1; row <= 300; ++row) FG.TextMatrix(row, 0, "T" + std::to_string(row));
  const auto sent = Tickers();
  form.ButExport.UserPress();
  FG.Rows(1);
  form.ButImport.UserPress();
  auto expected = std::vector<std::string>{"MSFT", "IBM"};
  expected.insert(expected.end(), sent.begin(), sent.end());
  EXPECT_EQ(Tickers(), expected);
}

TEST_F(TradingPortfolios, TellsOfAServerThatFails) {
  std::vector<const char*> faults{"drop", "reset", "truncate-head", "drop:2"};
#ifndef _WIN32  // where bytes without a head are a reply
  faults.push_back("garbage");
#endif
  for (const char* const fault : faults) {
    SCOPED_TRACE(fault);
    desktop.boxes.clear();
    server.SetHttpFault(quotetracker::HttpFaultPlan::Parse(fault, 1));
    form.ButImport.UserPress();
    EXPECT_THAT(desktop.boxes, ElementsAre(kRunQuoteTracker));
    EXPECT_THAT(Tickers(), IsEmpty());
    EXPECT_THAT(desktop.reports, IsEmpty());
  }
}

TEST_F(TradingPortfolios, TellsThatNobodyListens) {
  const RefusingPort nobody;
  Connect(nobody.Port());
  form.ButImport.UserPress();
  EXPECT_THAT(desktop.boxes, ElementsAre(kRunQuoteTracker));
}

TEST_F(TradingPortfolios, TellsThatSomethingElseListens) {
  const LoopbackServer page([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\n<html>It works!</html>");
  });
  Connect(page.Port());
  form.ButImport.UserPress();
  EXPECT_THAT(desktop.boxes, ElementsAre(kAdjustPort));
}

}  // namespace
}  // namespace mirelo::testing
