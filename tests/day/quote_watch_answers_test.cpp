// Answers where there is no quote, and those that are asked for rather than streamed.

#include <gmock/gmock.h>

#include <chrono>
#include <optional>

#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "day/watching.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST_F(Watching, SaysWhatIsWrongWithAQuestion) {
  EXPECT_THAT(Status("MSFT", "Lasst"),
              AllOf(HasSubstr("There is no column \"LASST\""), HasSubstr("Last, Change, Bid")));
  EXPECT_EQ(Status("MSFT", std::nullopt), "Several cells are given for the column; it is one cell or a name");
  EXPECT_EQ(Status(""), "No ticker is given");
  EXPECT_THAT(Status("A,B"), HasSubstr("\"A,B\" cannot be asked for"));
  const Watched watched[] = {Ask("MSFT", "Lasst"), Ask("MSFT", std::nullopt), Ask(""), Ask("A,B")};
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

}  // namespace
}  // namespace mirelo::testing
