#include <gmock/gmock.h>

#include <optional>

#include "snapshot/last_quote_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const ScriptedDesktop::Box kAdjustPort{
    "Please adjust Dovanta HTTP Port parameter in accordance with the same parameter in QouteTracker -> "
    "Preferences.",
    16, "Dovanta2"};
const ScriptedDesktop::Box kRetrievalErrorBox{"Data retrieval error.", 16, "Dovanta2"};

class QuoteMessages : public LastQuoteTest {
 protected:
  QuoteMessages() { Show("Ticker,LastVolume"); }

  // After a message the routine is left at once: no result, and its name still on the stack.
  void ExpectLeft(const Variant& result, const ScriptedDesktop::Box& box) {
    EXPECT_TRUE(IsEmptyText(result));
    EXPECT_THAT(desktop.boxes, ElementsAre(box));
    EXPECT_THAT(desktop.reports, IsEmpty());
    ASSERT_THAT(mGlobal::ErrorHandler().CallStack(), SizeIs(1));
    EXPECT_EQ(mGlobal::ErrorHandler().CallStack()[0].procedure, "Mirelo.cMirelo.GetLastQuote");
  }
};

TEST_F(QuoteMessages, AskForAnAddressThatIsEmpty) {
  Save("Webaddress", "");
  ExpectLeft(facade->GetLastQuote(TickersOf({"A"})), kAdjustPort);
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(QuoteMessages, AskForAPortThatIsZero) {
  Save("HTTPPort", 0);
  ExpectLeft(facade->GetLastQuote(TickersOf({"A"})), kAdjustPort);
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(QuoteMessages, TellOfARetrievalThatFailed) {
  const std::pair<const char*, std::optional<std::string>> replies[] = {
      {"no server", std::nullopt},
      {"nothing", ""},
      {"an error", "ERROR\r\nA"},
      {"a blank before", " OK\r\nA"},
      {"a blank behind", "OK \r\nA"},
      {"a longer word", "OKAY"},
      {"a longer word before a line", "OKAY\r\nA"},
      {"line feed only", "OK\nA"},
      {"an empty first line", "\r\nOK"},
  };
  for (const auto& [what, reply] : replies) {
    SCOPED_TRACE(what);
    desktop.boxes.clear();
    mGlobal::ErrorHandler().CallStackClear();
    internet.answer = [reply = reply](const auto&) { return reply; };
    ExpectLeft(facade->GetLastQuote(TickersOf({"A"})), kRetrievalErrorBox);
  }
}

TEST_F(QuoteMessages, AreNotShownForAStatusInAnyCase) {
  internet.answer = [&](const auto&) { return "oK\r\n" + market.Line("A"); };
  EXPECT_THAT(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1), ElementsAre("A", "0"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(QuoteMessages, LoseEarlierBatchesButNotTheirVolumes) {
  TrackVolumes(83);
  internet.answer = [&](const auto& request) -> std::optional<std::string> {
    if (internet.requests.size() == 1) return market.Reply(request.resource);
    return std::nullopt;
  };
  ExpectLeft(facade->GetLastQuote(Tickers(83)), kRetrievalErrorBox);
  EXPECT_EQ(Tracked(81, 1), "1000");
  EXPECT_EQ(Tracked(82, 1), "");
}

TEST_F(QuoteMessages, StopTheRequestsThatWouldFollow) {
  internet.answer = [](const auto&) { return std::nullopt; };
  facade->GetLastQuote(Tickers(200));
  EXPECT_THAT(internet.requests, SizeIs(1));
}

TEST_F(QuoteMessages, DoNotStopTheNextCall) {
  Save("HTTPPort", 0);
  facade->GetLastQuote(TickersOf({"A"}));
  Save("HTTPPort", 16239);
  EXPECT_TRUE(facade->GetLastQuote(TickersOf({"A"})).IsArray());
}

// 16 bits hold no port above 32767.
TEST_F(QuoteMessages, AskForThePortWhenItOverflowedAndTheUserAborted) {
  for (const std::int32_t port : {32768, 65535, -32769}) {
    SCOPED_TRACE(port);
    desktop.boxes.clear();
    desktop.reports.clear();
    mGlobal::ErrorHandler().CallStackClear();
    Save("HTTPPort", port);
    EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
    ASSERT_THAT(desktop.reports, SizeIs(1));
    EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tError: 6, (Overflow)\r\n"
                                                   "\tin Mirelo.cMirelo.GetPortWebAddress at line 0\r\n"));
    EXPECT_THAT(desktop.boxes, ElementsAre(kAdjustPort));
    EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());  // the abort has cleared it
  }
}

TEST_F(QuoteMessages, AreNotShownForTheHighestPort) {
  Save("HTTPPort", "32767");
  EXPECT_TRUE(facade->GetLastQuote(TickersOf({"A"})).IsArray());
  EXPECT_EQ(internet.requests[0].port, 32767);
}

TEST_F(QuoteMessages, LeaveNamesThatTheNextAbortRemoves) {
  Save("HTTPPort", 0);
  facade->GetLastQuote(TickersOf({"A"}));
  facade->GetLastQuote(TickersOf({"A"}));
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), SizeIs(2));
  Save("HTTPPort", 16239);
  facade->GetLastQuote("no array");
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
