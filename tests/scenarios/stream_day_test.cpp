// A working day of streamed quotes, with a peer that drops, falls silent, and streams over midnight.

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "scenarios/stream_day.h"
#include "support/error_number.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

TEST_F(StreamDay, SubscribesTheTickersOfTheTable) {
  BeginStreaming();
  EXPECT_EQ(Text(kTable, 1, 1), "Streaming( Alpstein Finance (delayed) )");
  EXPECT_THAT(winsock.Newest().sent, Contains(HasSubstr("<Symbols>MSFT,IBM</Symbols>")));
  EXPECT_EQ(told.back(), "Streaming");
}

// As in an office where no dialog was shown since the settings were removed.
TEST_F(StreamDay, StreamsFromTheCataloguesSourceWhereNoneIsStored) {
  BeginStreaming();
  day.reset();
  day.emplace(loop, sockets, replies, spreadsheet.Application());
  for (const char* const stored : {"First", "List"})
    mGlobal::AppSettings().DeleteSetting("Settings\\QuoteSource", stored);
  day->TakeSettings();
  day->Start();
  Converse();
  EXPECT_THAT(winsock.Newest().sent, Contains(HasSubstr("SWISS.SDF")));
}

// Its text is read in a window, where nobody has a command line.
TEST_F(StreamDay, IsRefusedASourceThatHasNoFileInWordsForPeopleAtAWindow) {
  BeginStreaming();
  day.reset();
  day.emplace(loop, sockets, replies, spreadsheet.Application());
  mGlobal::AppSettings().SaveSetting("Settings\\QuoteSource\\First", "ComQuoteSource", Variant("Nobody"));
  day->TakeSettings();
  const RuntimeError error = ErrorOf([&] { day->Start(); });
  EXPECT_EQ(error.Number(), 5);
  EXPECT_EQ(error.Description(), "No quote source is named \"Nobody\"; choose one in the settings");
}

TEST_F(StreamDay, CountsTheQuotesOfATableOfTickersAloneAndSaysOnceThatNothingIsShown) {
  wishes.columns = {"Ticker"};
  wishes.ticks.clear();
  BeginStreaming();
  EXPECT_EQ(std::ranges::count_if(
                told, [](const auto& line) { return line.find("nothing of them is shown") != line.npos; }),
            1);
  Quote(Of("MSFT").Last(1));
  EXPECT_EQ(day->Came().Count(), 1);
  EXPECT_EQ(day->Written(), 1);
}

TEST_F(StreamDay, WritesAQuoteAtOnce) {
  BeginStreaming();
  Deliver(Of("IBM").Last(160.5).Bid(160.25).Stamp("01202011093000").Bytes());
  EXPECT_EQ(Text(kTable, 4, 2), "160.5");
  EXPECT_EQ(Cell(kTable, 4, 2).type(), Variant::Type::Double);
  EXPECT_EQ(Cell(kTable, 4, 6).type(), Variant::Type::Date);
  EXPECT_TRUE(Cell(kTable, 3, 2).IsEmpty()) << "of another ticker";
  EXPECT_EQ(day->Written(), 1);
}

TEST_F(StreamDay, WritesQuotesThatComeTogetherTogether) {
  BeginStreaming();
  int writes = 0;
  day->Wrote.Subscribe([&] { ++writes; });
  std::string records;
  for (int step = 1; step <= 3; ++step)
    records += Trade(28 + step, 1000 + step).Bytes() + Of("IBM").Last(step).Bytes();
  Deliver(records);
  EXPECT_EQ(writes, 1);
  EXPECT_EQ(day->Written(), 6);
  EXPECT_EQ(Text(kTable, 3, 2), "31");
  EXPECT_EQ(Text(kTable, 4, 2), "3");
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("29", "30", "31"));
}

// A write takes a while, and the next one waits for twice that.
TEST_F(StreamDay, LetsQuotesGatherBehindAWriteAndWritesThemAllTheSame) {
  BeginStreaming();
  int writes = 0;
  day->Wrote.Subscribe([&] { ++writes; });
  constexpr int kQuotes = 200;
  for (int step = 1; step <= kQuotes; ++step) Deliver(Trade(step, 1000 + step).Bytes());
  EXPECT_LT(writes, kQuotes) << "of quotes that come at once, not all have time for a write of their own";
  Pass(kWritePause);
  EXPECT_EQ(day->Written(), kQuotes);
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("197", "198", "199", "200"));
}

class SharedStreamDay : public StreamDay {
 protected:
  // In a workbook where a person waits for each write, however short it is.
  void BeginSharing() {
    wishes.ticks = {{"MSFT", "Last"}, {"IBM", "Last"}};
    BeginStreaming();
    day->HoldAtMost(0ms);
    Deliver(Trade(28, 1001).Bytes() + Of("IBM").Last(160).Bytes());
  }
};

TEST_F(SharedStreamDay, LetsHistoriesWaitForLaterWritesButNotTheQuoteTable) {
  BeginSharing();
  EXPECT_EQ(Text(kTable, 3, 2), "28");
  EXPECT_EQ(Text(kTable, 4, 2), "160");
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("28"));
  EXPECT_THAT(Column(History("IBM"), 1), IsEmpty());
  Pass(kWritePause);
  EXPECT_THAT(Column(History("IBM"), 1), ElementsAre("160"));
  EXPECT_EQ(day->Written(), 2);
}

TEST_F(SharedStreamDay, WritesAllThatWaitsWhenItStops) {
  BeginSharing();
  day->Stop();
  EXPECT_THAT(Column(History("IBM"), 1), ElementsAre("160"));
}

TEST_F(StreamDay, KeepsWhatALaterQuoteDoesNotCarry) {
  BeginStreaming();
  Quote(Trade(28.35, 1000));
  Quote(Of("MSFT").Bid(28.30));
  EXPECT_EQ(Text(kTable, 3, 2), "28.35");
  EXPECT_EQ(Text(kTable, 3, 3), "28.3");
  EXPECT_EQ(Text(kTable, 3, 4), "1000");
}

TEST_F(StreamDay, WritesAZeroThatIsTheOnlyNewsOfItsRecord) {
  BeginStreaming();
  Quote(Trade(28.35, 1000).Bid(28.3));
  Quote(Of("MSFT").Bid(0));
  EXPECT_EQ(Text(kTable, 3, 3), "0");
  Quote(Of("MSFT").Bid(28.3));
  EXPECT_EQ(Text(kTable, 3, 3), "28.3");
}

TEST_F(StreamDay, WritesAZeroThatIsTheFirstNewsOfAConnection) {
  BeginStreaming();
  Quote(Trade(28.35, 1000).Bid(28.3));
  winsock.Newest().Drop();
  Pass(1s);
  Converse();
  Quote(Of("MSFT").Bid(0));
  EXPECT_EQ(Text(kTable, 3, 3), "0");
}

TEST_F(StreamDay, WritesAZeroThatCame) {
  BeginStreaming();
  Quote(Trade(28.35, 1000).Bid(28.3));
  Quote(Of("MSFT").Last(28.4).Bid(0));
  EXPECT_EQ(Text(kTable, 3, 3), "0");
}

TEST_F(StreamDay, WritesTheDoubleOfTheWireIntoTableAndHistory) {
  BeginStreaming();
  const double odd = 0.1 + 0.2;
  Quote(Of("MSFT").Last(odd));
  EXPECT_EQ(Cell(kTable, 3, 2).ToDouble(), odd);
  EXPECT_EQ(Cell(History("MSFT"), 3, 1).ToDouble(), odd);
}

TEST_F(StreamDay, AppendsEveryQuoteToTheHistory) {
  BeginStreaming();
  for (const int step : {1, 2}) Deliver(Trade(28 + step, 1000 + 100 * step).Bytes());
  Pass(kWritePause);
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("29", "30"));
  EXPECT_THAT(Column(History("MSFT"), 2), ElementsAre("0", "100"));
  for (const int step : {3, 4, 5}) Quote(Trade(28 + step, 1000 + 100 * step));
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("30", "31", "32", "33")) << "four rows are kept";
}

TEST_F(StreamDay, KeepsTheNewestOfMoreQuotesThanRowsAreKept) {
  BeginStreaming();
  for (int step = 1; step <= 20; ++step) Deliver(Trade(step, 1000 + step).Bytes());
  Pass(kWritePause);
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("17", "18", "19", "20"));
  EXPECT_EQ(day->Written(), 20);
}

TEST_F(StreamDay, GivesAQuoteWithoutATradeNoVolume) {
  BeginStreaming();
  Quote(Trade(28, 1000));
  Quote(Trade(28.5, 1100));
  Quote(Of("MSFT").Bid(28.25));
  EXPECT_THAT(Column(History("MSFT"), 2), ElementsAre("0", "100", "0"));
}

TEST_F(StreamDay, BeginsVolumesAnewAtMidnight) {
  BeginStreaming();
  Quote(Trade(28, 1000, "01202011235958"));
  Quote(Trade(28.5, 1500, "01202011235959"));
  EXPECT_EQ(Text(kTable, 3, 5), "500");
  clock.Set({2011, 1, 21, 0, 0, 1});
  Quote(Trade(28.75, 120, "01212011000001"));
  EXPECT_EQ(Text(kTable, 3, 5), "0");
  EXPECT_EQ(Text(kTable, 3, 6), "1/21/2011");
  Quote(Trade(28.5, 170, "01212011000002"));
  EXPECT_EQ(Text(kTable, 3, 5), "50");
}

// A socket may cut a record where its bytes look like a reply.
TEST_F(StreamDay, TakesNoPartOfAQuoteForARefusedLogin) {
  wishes.tickers = {"MSFT", "XLOW"};
  BeginStreaming();
  const std::string record = Of("XLOW").Last(12.5).Stamp("01202011093000").Bytes();
  const std::size_t cut = record.find("LOW");
  Deliver(record.substr(0, cut));
  Deliver(record.substr(cut));
  Pass(kWritePause);
  EXPECT_EQ(Text(kTable, 4, 2), "12.5");
  EXPECT_THAT(told, Not(Contains(HasSubstr("refused"))));
}

TEST_F(StreamDay, PassesOverTickersThatItDidNotAskFor) {
  BeginStreaming();
  Quote(Of("GE").Last(11));
  EXPECT_EQ(day->Came().Count(), 0);
  EXPECT_THAT(told, Contains(HasSubstr("not asked for")));
  EXPECT_EQ(day->Written(), 0);
  EXPECT_TRUE(Cell(kTable, 5, 1).IsEmpty());
}

TEST_F(StreamDay, ReconnectsAfterPausesThatGrowWhenThePeerDrops) {
  BeginStreaming();
  winsock.Newest().Drop();
  EXPECT_EQ(told.back(), "reset by peer; reconnecting in 1 second");
  Pass(999ms);
  EXPECT_THAT(winsock.connections, SizeIs(1));
  Pass(1ms);
  EXPECT_THAT(winsock.connections, SizeIs(2));
  winsock.Newest().Drop();
  EXPECT_EQ(told.back(), "reset by peer; reconnecting in 2 seconds");
  Pass(2s);
  EXPECT_THAT(winsock.connections, SizeIs(3));

  Converse();
  Quote(Of("MSFT").Last(30));
  EXPECT_EQ(Text(kTable, 3, 2), "30");
  winsock.Newest().Drop();
  EXPECT_EQ(told.back(), "reset by peer; reconnecting in 1 second") << "it had streamed";
  EXPECT_EQ(day->Reconnects(), 2) << "until now";
}

TEST_F(StreamDay, KeepsTheHistoryOverARestartOfThePeer) {
  BeginStreaming();
  Quote(Trade(28, 1000));
  winsock.Newest().Drop();
  Pass(1s);
  Converse();
  Quote(Trade(29, 1200));
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("28", "29"));
  EXPECT_THAT(Column(History("MSFT"), 2), ElementsAre("0", "0")) << "the stream begins anew";
}

TEST_F(StreamDay, ReconnectsWhenThePeerFallsSilent) {
  BeginStreaming();
  Quote(Trade(28, 1000));
  Pass(118s);
  EXPECT_THAT(winsock.connections, SizeIs(1));
  Pass(1500ms);
  EXPECT_EQ(told.back(), "QuoteTracker has said nothing for 60 seconds; reconnecting in 1 second");
  Pass(1s);
  ASSERT_THAT(winsock.connections, SizeIs(2));
  Pass(120s);
  EXPECT_EQ(told.back(), "QuoteTracker has said nothing for 120 seconds; reconnecting in 2 seconds");
}

TEST_F(StreamDay, FindsQuotesThatCameWhileOthersWereTold) {
  BeginStreaming();
  // Falls due in the yield behind the first quote's event, when no second event is raised.
  loop.StartTimer(0ms, [this] { winsock.Newest().DeliverOutOfTurn(Of("IBM").Last(161).Bytes()); });
  Quote(Of("MSFT").Last(28));
  EXPECT_EQ(Text(kTable, 4, 2), "161");
}

TEST_F(StreamDay, EndsItsSubscriptionsAndWritesWhatIsLeft) {
  BeginStreaming();
  Deliver(Of("MSFT").Last(28.35).Bytes());
  day->Stop();
  EXPECT_EQ(Text(kTable, 3, 2), "28.35");
  EXPECT_THAT(winsock.calls, Contains("disconnect"));
  Pass(1h);
  EXPECT_THAT(winsock.connections, SizeIs(1)) << "it does not reconnect";
}

// A write is made on a timer as well, which may fall due while the stream serves the loop behind a quote,
// where failures are dropped.
TEST_F(StreamDay, EndsWithAFailureOfWritingWhereverThatCame) {
  BeginStreaming();
  Deliver(Of("MSFT").Last(28).Bytes());
  day->Wrote.Subscribe([] { throw RuntimeError(1004, "The sheet is gone"); });
  Deliver(Of("MSFT").Last(29).Bytes());
  bool late = false;
  loop.StartTimer(1s, [&] { late = true; });
  loop.SkipWaits();
  EXPECT_THROW(day->RunUntil([&] { return late; }), RuntimeError);
}

// In an office the loop is somebody else's.
TEST_F(StreamDay, TellsOfAFailureOfWritingWithoutAnybodyWhoWaits) {
  BeginStreaming();
  int ends = 0;
  day->Over.Subscribe([&] { ++ends; });
  Deliver(Of("MSFT").Last(28).Bytes());
  EXPECT_EQ(ends, 0);
  EXPECT_NO_THROW(day->RaiseFailure());
  day->Wrote.Subscribe([] { throw RuntimeError(1004, "The sheet is gone"); });
  Quote(Of("MSFT").Last(29));
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(NumberOf([&] { day->RaiseFailure(); }), 1004);
}

TEST_F(StreamDay, TellsALossAndEndsWithOtherFailuresOfTheLoop) {
  BeginStreaming();
  int ends = 0;
  day->Over.Subscribe([&] { ++ends; });
  day->TakeFailure(std::make_exception_ptr(Errors::SubscriptOutOfRange()));
  EXPECT_THAT(told.back(), HasSubstr("Quotes were lost"));
  EXPECT_EQ(ends, 0);
  day->TakeFailure(std::make_exception_ptr(RuntimeError(13, "no number")));
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(NumberOf([&] { day->RaiseFailure(); }), 13);
}

TEST_F(StreamDay, TellsOfAFailureOfReconnectingWithoutAnybodyWhoWaits) {
  BeginStreaming();
  bool is_over = false;
  day->Over.Subscribe([&] { is_over = true; });
  mGlobal::AppSettings().SaveSetting("Settings", "SocketPort", "no number");
  winsock.Newest().Drop();
  Pass(2s);
  EXPECT_TRUE(is_over);
  EXPECT_EQ(NumberOf([&] { day->RaiseFailure(); }), 13);
}

TEST_F(StreamDay, LeavesAWorkbookThatIsGoneAlone) {
  BeginStreaming();
  Quote(Of("MSFT").Last(28));
  int writes = 0;
  day->Wrote.Subscribe([&] { ++writes; });
  day->Abandon();
  Pass(1h);
  EXPECT_EQ(writes, 0);
  EXPECT_EQ(loop.NextTimer(), std::nullopt);
  EXPECT_THAT(winsock.calls, Contains("disconnect"));
}

}  // namespace
}  // namespace mirelo::testing
