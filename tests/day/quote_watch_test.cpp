// What is answered to questions about quotes, when QuoteTracker is called for them, and when no more.

#include "day/quote_watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/text.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "host/host.h"
#include "support/answering_internet.h"
#include "support/level1_wire.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/memory_winsock.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"
#include "wire/side_host.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using About = day::QuoteQuestion::About;
using Watched = std::unique_ptr<day::QuoteWatch::Watched>;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// A watch on a machine whose time the test moves, and with a QuoteTracker that the test plays.
class Watching : public ::testing::Test {
 protected:
  Watching() {
    host.Use(loop).Use(clock).Use(registry).Use(desktop).Use(system).Use(vault);
    vault.credentials = {{MemoryVault::Credential::ApplicationName, "MireloDemo"},
                         {MemoryVault::Credential::ApplicationSecret, "demo-secret"}};
    side.emplace(host, wire::SideHost::Parts{.sockets =
                                                 [this](host::MessageLoop&) {
                                                   auto made = std::make_unique<MemoryWinsock>();
                                                   sockets = made.get();
                                                   return made;
                                                 },
                                             .internet =
                                                 [this](host::MessageLoop&) {
                                                   auto made = std::make_unique<AnsweringInternet>();
                                                   internet = made.get();
                                                   return made;
                                                 }});
    watch.emplace(*side, [this] { return day::QuoteWatch::Clock::time_point(loop.Elapsed()); });
    internet->answer = [this](const AnsweringInternet::Request& request) { return Reply(request.resource); };
  }
  ~Watching() override { EXPECT_THAT(desktop.boxes, IsEmpty()); }

  void Save(const char* key, const char* text) {
    mGlobal::AppSettings().SaveSetting("Settings", key, Variant(text));
  }
  void Streamed() {
    Save("Seconds", "0");
    mGlobal::AppSettings().SaveSetting("Settings\\QuoteSource\\First", "ComQuoteSource", Variant("Swiss"));
    mGlobal::AppSettings().SaveSetting("Settings\\QuoteSource\\List", "Swiss", Variant("SWISS.SDF"));
  }
  Watched Ask(const std::string& ticker, const std::string& column = "Last", About about = About::Value) {
    return watch->Ask({about, ticker, column},
                      [this, name = ticker + " " + column] { told.push_back(name); });
  }
  std::string Status(const std::string& ticker, const std::string& column = "Last") {
    return Ask(ticker, column, About::Status)->Answer().ToText();
  }
  void Pass(std::chrono::milliseconds time) { loop.Advance(time); }

  // The peer's part of a stream's conversation up to the first quote.
  void Converse() {
    Deliver("OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>");
    Deliver("LO<STATUSCODE>0</STATUSCODE>");
    Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
  }
  void Deliver(std::string_view bytes) { sockets->Newest().Deliver(bytes); }
  void Quote(const char* ticker, double last) {
    Deliver(Level1Wire().Symbol(ticker).Last(last).Bytes());
    Pass(day::QuoteWatch::kTellPause);
  }
  // Streams a ticker until there is something.
  void BeginStreaming() {
    Pass(day::QuoteWatch::kGather);
    Converse();
    told.clear();
  }
  // The tickers of each subscription, whose message has them in groups.
  std::vector<std::string> Subscriptions() const {
    constexpr std::string_view kBegin = "<ReqType>SUB</ReqType><Symbols>";
    std::vector<std::string> symbols;
    for (const auto& connection : sockets->connections) {
      for (const std::string& sent : connection->sent) {
        const auto begin = sent.find(kBegin);
        if (begin == std::string::npos) continue;
        const auto end = sent.rfind("</Symbols>");
        symbols.push_back(Replace(sent.substr(begin + kBegin.size(), end - begin - kBegin.size()),
                                  "</Symbols><Symbols>", ","));
      }
    }
    return symbols;
  }

  // What QuoteTracker answers to a request for quotes.
  std::optional<std::string> Reply(const std::string& resource) {
    if (!answers) return std::nullopt;
    const auto begin = resource.find('(') + 1;
    std::string reply = "OK";
    for (const std::string& ticker : Split(resource.substr(begin, resource.size() - begin - 1), ",")) {
      reply +=
          "\r\n" + ticker + "," +
          (ticker == "NONE" ? "" : "01/20/2011,09:30:00," + last + ",28,29,-1,U,100,3,2,1,1,5,9,9,1,1,1");
    }
    return reply;
  }

  ManualLoop loop;
  ManualClock clock;
  MemoryRegistry registry;
  ScriptedDesktop desktop;
  RecordingSystem system;
  MemoryVault vault;
  TestHost host;
  host::HostScope installed{host};
  MemoryWinsock* sockets = nullptr;
  AnsweringInternet* internet = nullptr;
  std::optional<wire::SideHost> side;
  std::optional<day::QuoteWatch> watch;
  std::vector<std::string> told;  // whose answers changed
  bool answers = true;
  std::string last = "28.5";
};

// --- Streamed --------------------------------------------------------------------------------------------

TEST_F(Watching, HasNoAnswerUntilAQuoteComes) {
  Streamed();
  const Watched price = Ask("MSFT");
  EXPECT_TRUE(price->Answer().IsNothing());
  BeginStreaming();
  EXPECT_TRUE(price->Answer().IsNothing());
  EXPECT_THAT(told, IsEmpty());
  Quote("MSFT", 28.5);
  EXPECT_EQ(price->Answer(), day::QuoteValue(28.5));
  EXPECT_THAT(told, ElementsAre("MSFT Last"));
}

TEST_F(Watching, SubscribesTogetherWhatIsAskedTogether) {
  Streamed();
  std::vector<Watched> prices;
  for (int i = 0; i < 2000; ++i)
    prices.push_back(Ask("T" + std::to_string(i % 1000), i < 1000 ? "Last" : "Bid"));
  EXPECT_THAT(sockets->connections, IsEmpty());
  BeginStreaming();
  EXPECT_THAT(sockets->connections, SizeIs(1));
  EXPECT_EQ(watch->Supply().Beginnings(), 1);
  EXPECT_EQ(Split(Join(Subscriptions(), ","), ",").size(), 1000U);
}

TEST_F(Watching, WaitsForMoreTickersButNotForEver) {
  Streamed();
  std::vector<Watched> prices;
  for (int i = 0; i < 30; ++i) {
    prices.push_back(Ask("T" + std::to_string(i)));
    Pass(day::QuoteWatch::kGather / 2);
  }
  EXPECT_EQ(watch->Supply().Beginnings(), 1);
  Pass(day::QuoteWatch::kGather);
  EXPECT_EQ(watch->Supply().Beginnings(), 2);
}

TEST_F(Watching, NamesATickerOnceHoweverItIsWritten) {
  Streamed();
  const Watched prices[] = {Ask("msft"), Ask(" MSFT "), Ask("Msft", "bid")};
  BeginStreaming();
  EXPECT_THAT(Subscriptions(), ElementsAre("MSFT"));
  Quote("MSFT", 3);
  EXPECT_EQ(prices[0]->Answer(), day::QuoteValue(3.0));
  EXPECT_EQ(prices[1]->Answer(), day::QuoteValue(3.0));
  EXPECT_THAT(told, ElementsAre("msft Last", " MSFT  Last"));
}

TEST_F(Watching, TellsOfManyQuotesOnceATenthOfASecond) {
  Streamed();
  const Watched price = Ask("MSFT");
  BeginStreaming();
  for (int i = 1; i <= 50; ++i) Deliver(Level1Wire().Symbol("MSFT").Last(i).Bytes());
  EXPECT_THAT(told, IsEmpty());
  Pass(day::QuoteWatch::kTellPause);
  EXPECT_THAT(told, ElementsAre("MSFT Last"));
  EXPECT_EQ(price->Answer(), day::QuoteValue(50.0));
}

TEST_F(Watching, IsSilentWhereNothingThatIsAskedChanges) {
  Streamed();
  const Watched price = Ask("MSFT");
  BeginStreaming();
  Quote("MSFT", 2);
  told.clear();
  Deliver(Level1Wire().Symbol("MSFT").Last(2).Bid(1.5).Bytes());
  Pass(day::QuoteWatch::kTellPause);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(Watching, KeepsWhatItKnowsWhileATickerIsAdded) {
  Streamed();
  const Watched first = Ask("MSFT");
  BeginStreaming();
  Quote("MSFT", 2);
  const Watched second = Ask("IBM");
  BeginStreaming();
  EXPECT_THAT(Subscriptions(), ElementsAre("MSFT", "IBM,MSFT"));
  EXPECT_EQ(sockets->connections[0]->state, host::SocketConnection::kClosed);
  EXPECT_EQ(first->Answer(), day::QuoteValue(2.0));
  Quote("IBM", 7);
  EXPECT_EQ(second->Answer(), day::QuoteValue(7.0));
}

TEST_F(Watching, LeavesOutATickerOfWhichNobodyAsksAnyMore) {
  Streamed();
  const Watched first = Ask("MSFT");
  Watched second = Ask("IBM");
  BeginStreaming();
  second.reset();
  Pass(day::QuoteWatch::kLinger);
  Converse();
  EXPECT_THAT(Subscriptions(), ElementsAre("IBM,MSFT", "MSFT"));
}

TEST_F(Watching, HangsUpALittleAfterTheLastQuestion) {
  Streamed();
  Watched price = Ask("MSFT");
  BeginStreaming();
  price.reset();
  EXPECT_EQ(sockets->Newest().state, host::SocketConnection::kConnected);
  Pass(day::QuoteWatch::kLinger);
  EXPECT_THAT(sockets->Newest().sent, Contains(HasSubstr("UNSUBALL")));
  EXPECT_EQ(sockets->Newest().state, host::SocketConnection::kClosed);
  EXPECT_EQ(loop.NextTimer(), std::nullopt) << "nothing is left to do";
}

TEST_F(Watching, StaysConnectedWhereTheSameIsAskedAnew) {
  Streamed();
  Watched price = Ask("MSFT");
  BeginStreaming();
  Quote("MSFT", 2);
  price.reset();
  price = Ask("MSFT");
  EXPECT_EQ(price->Answer(), day::QuoteValue(2.0));
  Pass(2 * day::QuoteWatch::kLinger);
  EXPECT_THAT(sockets->connections, SizeIs(1));
}

TEST_F(Watching, ForgetsWhatItKnewOfATickerThatWasLeftOut) {
  Streamed();
  Watched price = Ask("MSFT");
  BeginStreaming();
  Quote("MSFT", 2);
  price.reset();
  Pass(day::QuoteWatch::kLinger);
  EXPECT_TRUE(Ask("MSFT")->Answer().IsNothing());
}

TEST_F(Watching, CallsAgainWhenQuoteTrackerDrops) {
  Streamed();
  const Watched price = Ask("MSFT");
  const Watched status = Ask("MSFT", "Last", About::Status);
  BeginStreaming();
  Quote("MSFT", 2);
  EXPECT_EQ(status->Answer().ToText(), "Streaming");
  sockets->Newest().Drop("The other side has hung up");
  Pass(day::QuoteWatch::kTellPause);
  EXPECT_EQ(status->Answer().ToText(), "The other side has hung up; reconnecting in 1 second");
  EXPECT_EQ(price->Answer(), day::QuoteValue(2.0)) << "what was known stays";
  Pass(1s);
  Converse();
  Quote("MSFT", 3);
  EXPECT_EQ(price->Answer(), day::QuoteValue(3.0));
  EXPECT_EQ(status->Answer().ToText(), "Streaming");
}

TEST_F(Watching, LetsItsListenersAskAndEndAsTheyAreTold) {
  Streamed();
  Watched other = Ask("MSFT", "Bid");
  Watched more;
  const Watched price = watch->Ask({About::Value, "MSFT", "Last"}, [&] {
    other.reset();
    if (!more) more = Ask("IBM");
  });
  BeginStreaming();
  Deliver(Level1Wire().Symbol("MSFT").Last(2).Bid(1).Bytes());
  Pass(day::QuoteWatch::kTellPause);
  EXPECT_EQ(watch->Count(), 2U);
  EXPECT_NE(more, nullptr);
}

// As a cell that is calculated anew with all that hangs on it.
void WorkFor(std::chrono::milliseconds time) {
  const std::clock_t end = std::clock() + static_cast<std::clock_t>(CLOCKS_PER_SEC * time.count() / 1000);
  while (std::clock() < end) {
  }
}

TEST_F(Watching, LetsOthersWorkBetweenWhereItTellsMany) {
  Streamed();
  std::vector<Watched> cells;
  std::vector<std::size_t> told_cells;
  for (std::size_t i = 0; i < 20; ++i) {
    cells.push_back(watch->Ask({About::Value, "MSFT", "Last"}, [&, i] {
      told_cells.push_back(i);
      WorkFor(3ms);
    }));
  }
  BeginStreaming();
  Quote("MSFT", 27.5);
  const std::size_t at_once = told_cells.size();
  EXPECT_GE(at_once, 1U);
  EXPECT_LE(at_once, 6U);
  Pass(60ms);  // more than twice as long as it worked
  EXPECT_GT(told_cells.size(), at_once);
  for (int i = 0; i < 20; ++i) Pass(50ms);
  std::vector<std::size_t> in_turn(cells.size());
  std::iota(in_turn.begin(), in_turn.end(), std::size_t{0});
  EXPECT_EQ(told_cells, in_turn);
}

TEST_F(Watching, TellsOnceWhatChangesAgainBeforeItsTurn) {
  Streamed();
  std::vector<Watched> cells;
  std::vector<double> told_of_last;
  for (int i = 0; i < 10; ++i)
    cells.push_back(watch->Ask({About::Value, "MSFT", "Last"}, [] { WorkFor(3ms); }));
  const Watched last =
      watch->Ask({About::Value, "MSFT", "Last"}, [&] { told_of_last.push_back(last->Answer().ToNumber()); });
  BeginStreaming();
  Quote("MSFT", 27.5);
  ASSERT_THAT(told_of_last, IsEmpty());
  Deliver(Level1Wire().Symbol("MSFT").Last(28.5).Bytes());
  for (int i = 0; i < 20; ++i) Pass(50ms);
  EXPECT_THAT(told_of_last, ElementsAre(28.5));
}

TEST_F(Watching, LeavesOutOfItsTurnWhatIsAskedNoMore) {
  Streamed();
  std::vector<Watched> cells;
  std::size_t calls = 0;
  for (int i = 0; i < 10; ++i) {
    cells.push_back(watch->Ask({About::Value, "MSFT", "Last"}, [&] {
      ++calls;
      WorkFor(6ms);
    }));
  }
  BeginStreaming();
  Quote("MSFT", 27.5);
  const std::size_t before = calls;
  cells.clear();
  Pass(1s);
  EXPECT_EQ(calls, before);
}

TEST_F(Watching, FollowsTheSettingsAsTheyChange) {
  Streamed();
  const Watched price = Ask("MSFT");
  BeginStreaming();
  Pass(day::QuoteWatch::kLook);
  EXPECT_EQ(watch->Supply().Beginnings(), 1);
  Save("Seconds", "5");
  Pass(day::QuoteWatch::kLook + day::QuoteWatch::kTellPause);
  EXPECT_EQ(sockets->Newest().state, host::SocketConnection::kClosed);
  EXPECT_EQ(price->Answer(), day::QuoteValue(28.5)) << "which is asked for";
}

// --- Why there is no quote -------------------------------------------------------------------------------

TEST_F(Watching, SaysWhatIsWrongWithAQuestion) {
  EXPECT_THAT(Status("MSFT", "Lasst"),
              AllOf(HasSubstr("There is no column \"LASST\""), HasSubstr("Last, Change, Bid")));
  EXPECT_EQ(Status(""), "No ticker is given");
  EXPECT_THAT(Status("A,B"), HasSubstr("\"A,B\" cannot be asked for"));
  const Watched watched[] = {Ask("MSFT", "Lasst"), Ask(""), Ask("A,B")};
  Pass(day::QuoteWatch::kGather + day::QuoteWatch::kTellPause);
  EXPECT_THAT(internet->Resources(), Each("/req?GetLastQuote(MSFT)"));
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(Watching, StreamsFromTheFirstSourceWhereNoneWasEverChosen) {
  Save("Seconds", "0");
  const Watched price = Ask("MSFT");
  BeginStreaming();
  EXPECT_THAT(Subscriptions(), ElementsAre("MSFT"));
}

TEST_F(Watching, SaysThatNoSourceHasTheNameAndBeginsOnceOneHas) {
  Save("Seconds", "0");
  mGlobal::AppSettings().SaveSetting("Settings\\QuoteSource\\First", "ComQuoteSource", Variant("Nobody"));
  const Watched status = Ask("MSFT", "Last", About::Status);
  Pass(day::QuoteWatch::kGather + day::QuoteWatch::kTellPause);
  EXPECT_EQ(status->Answer().ToText(), "No quote source is named \"Nobody\"; choose one in the settings");
  Streamed();
  Pass(day::QuoteWatch::kLook);
  Converse();
  Pass(day::QuoteWatch::kTellPause);
  EXPECT_EQ(status->Answer().ToText(), "QuoteTracker has sent no quote yet of MSFT");
}

TEST_F(Watching, SaysThatTheLoginIsRefused) {
  Streamed();
  const Watched status = Ask("MSFT", "Last", About::Status);
  Pass(day::QuoteWatch::kGather);
  Deliver("OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>");
  Deliver("LO<STATUSCODE>5</STATUSCODE><STATUSDESC>No such application</STATUSDESC>");
  Pass(day::QuoteWatch::kTellPause);
  EXPECT_THAT(status->Answer().ToText(), HasSubstr("refused the login: NO SUCH APPLICATION"));
}

TEST_F(Watching, SaysWhatQuotesHaveNotBrought) {
  Streamed();
  const Watched price = Ask("MSFT");
  BeginStreaming();
  EXPECT_EQ(Status("MSFT"), "QuoteTracker has sent no quote yet of MSFT");
  Deliver(Level1Wire().Symbol("MSFT").Last(0).Bytes());
  EXPECT_EQ(Status("MSFT"), "QuoteTracker knows no quote of MSFT");
  Quote("MSFT", 2);
  EXPECT_EQ(Status("MSFT"), "Streaming");
  EXPECT_EQ(Status("MSFT", "Open"), "No quote of MSFT has had Open yet");
  EXPECT_EQ(Status("MSFT", "Tick"), "A stream does not bring Tick");
}

// --- Asked for -------------------------------------------------------------------------------------------

TEST_F(Watching, AsksAtThePaceOfTheSettings) {
  Save("Seconds", "7");
  const Watched price = Ask("MSFT");
  const Watched tick = Ask("MSFT", "Tick");
  Pass(day::QuoteWatch::kGather + day::QuoteWatch::kTellPause);
  EXPECT_EQ(price->Answer(), day::QuoteValue(28.5));
  EXPECT_EQ(tick->Answer().ToText(), "U") << "though the quote table does not show it";
  EXPECT_EQ(Status("MSFT"), "Asked every 7 seconds");
  last = "29";
  Pass(7s + day::QuoteWatch::kTellPause);
  EXPECT_EQ(price->Answer(), day::QuoteValue(29.0));
  EXPECT_THAT(internet->requests, SizeIs(2));
}

TEST_F(Watching, AsksOnceWhereTheSettingsSaySo) {
  Save("UpdateEvery", "0");
  const Watched price = Ask("MSFT");
  Pass(1min);
  EXPECT_THAT(internet->requests, SizeIs(1));
  const Watched other = Ask("IBM");
  Pass(1min);
  EXPECT_THAT(internet->Resources(), ElementsAre("/req?GetLastQuote(MSFT)", "/req?GetLastQuote(IBM,MSFT)"));
  EXPECT_EQ(Status("IBM"), "Asked once");
}

TEST_F(Watching, SaysWhatQuoteTrackerDidNotAnswerAndAsksAgain) {
  Save("Seconds", "5");
  answers = false;
  const Watched price = Ask("MSFT");
  const Watched status = Ask("MSFT", "Last", About::Status);
  Pass(day::QuoteWatch::kGather + day::QuoteWatch::kTellPause);
  EXPECT_EQ(status->Answer().ToText(), "Data retrieval error.");
  EXPECT_TRUE(price->Answer().IsNothing());
  answers = true;
  Pass(5s + day::QuoteWatch::kTellPause);
  EXPECT_EQ(price->Answer(), day::QuoteValue(28.5));
  EXPECT_EQ(status->Answer().ToText(), "Asked every 5 seconds");
}

TEST_F(Watching, KnowsNoQuoteOfATickerThatQuoteTrackerDoesNotKnow) {
  const Watched prices[] = {Ask("NONE"), Ask("MSFT")};
  Pass(day::QuoteWatch::kGather + day::QuoteWatch::kTellPause);
  EXPECT_TRUE(prices[0]->Answer().IsNothing());
  EXPECT_EQ(prices[1]->Answer(), day::QuoteValue(28.5));
  EXPECT_EQ(Status("NONE"), "QuoteTracker knows no quote of NONE");
}

// A request serves the message loop while it waits, and a spreadsheet asks more meanwhile.
TEST_F(Watching, TakesTickersThatAreAskedWhileQuoteTrackerAnswers) {
  const Watched price = Ask("MSFT");
  Watched other;
  internet->answer = [&](const AnsweringInternet::Request& request) {
    if (!other) {
      other = Ask("IBM");
      Pass(2 * day::QuoteWatch::kGather);
    }
    return Reply(request.resource);
  };
  Pass(day::QuoteWatch::kGather);
  Pass(day::QuoteWatch::kTellPause);
  EXPECT_THAT(internet->Resources(), ElementsAre("/req?GetLastQuote(MSFT)", "/req?GetLastQuote(IBM,MSFT)"));
  EXPECT_EQ(price->Answer(), day::QuoteValue(28.5));
  EXPECT_EQ(other->Answer(), day::QuoteValue(28.5));
}

// --- Ages ------------------------------------------------------------------------------------------------

TEST_F(Watching, TellsTheAgeOfAQuoteOnceASecond) {
  Streamed();
  Watched age = Ask("MSFT", "", About::Age);
  BeginStreaming();
  EXPECT_TRUE(age->Answer().IsNothing());
  Quote("MSFT", 2);
  EXPECT_EQ(age->Answer(), day::QuoteValue(0.0));
  told.clear();
  Pass(3900ms);
  EXPECT_EQ(std::ranges::count(told, "MSFT "), 3);
  EXPECT_EQ(age->Answer(), day::QuoteValue(3.0));
  age.reset();
  Pass(day::QuoteWatch::kLinger);
  EXPECT_EQ(loop.NextTimer(), std::nullopt);
}

}  // namespace
}  // namespace mirelo::testing
