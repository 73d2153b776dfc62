// A working day of streamed quotes, with a peer that drops, falls silent, and streams over midnight.

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "day/day_charts.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/chart_parts.h"
#include "host/excel/constants.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/sheet.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "scenarios/day_rig.h"
#include "support/error_number.h"
#include "support/level1_wire.h"

namespace mirelo::testing {
namespace {

namespace excel = host::excel;
using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr std::int32_t kStreamed = 77;
// A write may have to wait for as long as that before it took twice, however slow the machine is.
constexpr auto kWritePause = 1s;

class StreamDay : public Day {
 protected:
  StreamDay() {
    wishes.tickers = {"MSFT", "IBM"};
    wishes.columns = {"Ticker", "Last", "Bid", "Volume", "LastVolume", "Date", "Time"};
    wishes.settings = {{"UpdateEvery", "1"},
                       {"Seconds", "0"},
                       {"ComQuoteSource", "Alpstein Finance (delayed)"},
                       {"VerticalTable", "1"},
                       {"RowsLimit", "4"}};
    wishes.ticks = {{"MSFT", "Last"}, {"MSFT", "LastVolume"}};
  }

  // The peer's part of the conversation up to the first quote.
  void Converse() {
    Deliver("OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>");
    Deliver("LO<STATUSCODE>0</STATUSCODE>");
    Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
  }
  void BeginStreaming() {
    ASSERT_EQ(Begin(), kStreamed);
    Converse();
  }
  void Deliver(std::string_view bytes) { winsock.Newest().Deliver(bytes); }
  // A quote, and the moment until it stands in the sheets.
  void Quote(const Level1Wire& record) {
    Deliver(record.Bytes());
    Pass(kWritePause);
  }
  static Level1Wire Of(const char* ticker) { return Level1Wire().Symbol(ticker); }
  static Level1Wire Trade(double last, std::int64_t volume, const char* stamp = "01202011093000") {
    return Of("MSFT").Last(last).Volume(volume).Stamp(stamp);
  }
};

TEST_F(StreamDay, SubscribesTheTickersOfTheTable) {
  BeginStreaming();
  EXPECT_EQ(Text(kTable, 1, 1), "Streaming( Alpstein Finance (delayed) )");
  EXPECT_THAT(winsock.Newest().sent, Contains(HasSubstr("<Symbols>MSFT,IBM</Symbols>")));
  EXPECT_EQ(told.back(), "Streaming");
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

class ChartedDay : public StreamDay {
 protected:
  ChartedDay() {
    wishes.settings = {
        {"UpdateEvery", "1"},   {"Seconds", "0"},    {"ComQuoteSource", "Alpstein Finance (delayed)"},
        {"VerticalTable", "1"}, {"RowsLimit", "50"}, {"BuildCharts", "1"},
        {"ChartStyle", "Blue"}, {"ChartPoints", "5"}};
    wishes.columns.push_back("Change");
    wishes.ticks.push_back({"MSFT", "Charts"});
  }

  std::shared_ptr<excel::Chart> Chart(const std::string& title) {
    const auto shapes = spreadsheet.Application()->Worksheets()->Item(History("MSFT"))->Shapes();
    for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
      if (shapes->Item(i)->Type() != excel::msoChart) continue;
      auto chart = shapes->Item(i)->Chart();
      if (chart->HasTitle() && chart->ChartTitle()->Text() == title) return chart;
    }
    throw std::logic_error("no chart " + title);
  }
  std::vector<std::string> Shown(const std::string& title) {
    const Variant values = Chart(title)->SeriesCollection(1)->Values();
    const VariantArray& points = values.AsArray();
    std::vector<std::string> texts;
    for (std::int32_t i = points.LBound(); i <= points.UBound(); ++i) texts.push_back(points(i).ToText());
    return texts;
  }
};

TEST_F(ChartedDay, ShowsTheLastPointsOfTheHistory) {
  BeginStreaming();
  for (int step = 1; step <= 9; ++step) Quote(Trade(20 + step, 1000 + 10 * step));
  EXPECT_THAT(Shown("Last"), ElementsAre("25", "26", "27", "28", "29"));
  EXPECT_THAT(Shown("LastVolume"), ElementsAre("10", "10", "10", "10", "10"));
}

TEST_F(ChartedDay, EndsPlotsAboveTheirLabels) {
  BeginStreaming();
  for (const char* title : {"Last", "LastVolume"}) {
    SCOPED_TRACE(title);
    const auto plot = Chart(title)->PlotArea();
    const double label = Chart(title)->ChartTitle()->Top();
    EXPECT_GT(label, 40) << "it stands at the foot";
    EXPECT_EQ(plot->Top() + plot->Height(), label);
  }
}

TEST_F(ChartedDay, KeepsChartsBesideATableThatGetsWider) {
  BeginStreaming();
  const auto sheet = spreadsheet.Application()->Worksheets()->Item(History("MSFT"));
  const auto left_of_charts = [&] {
    const auto shapes = sheet->Shapes();
    std::vector<double> lefts;
    for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
      if (shapes->Item(i)->Type() == excel::msoChart) lefts.push_back(shapes->Item(i)->Left());
    }
    return lefts;
  };
  const auto end_of_table = [&] {
    std::int32_t column = 1;
    while (!sheet->Cells(2, column)->Value().IsEmpty()) ++column;
    return sheet->Cells(2, column)->Left();
  };
  const double before = end_of_table();
  Quote(Trade(123456789.25, 1000));
  EXPECT_GT(end_of_table(), before);
  EXPECT_THAT(left_of_charts(), ElementsAre(end_of_table(), end_of_table()));
}

TEST_F(ChartedDay, ColoursByTheChangeOfTheLastTwoQuotes) {
  BeginStreaming();
  const auto title_after = [&](double earlier, double latest) {
    Quote(Trade(20 + earlier, 2000).Change(earlier));
    Quote(Trade(20 + latest, 2001).Change(latest));
    return Chart("Last")->ChartTitle()->Interior()->ColorIndex().ToInt32();
  };
  EXPECT_EQ(title_after(0.5, -0.25), 10) << "the one before had risen";
  EXPECT_EQ(title_after(-0.75, 0.25), 53) << "the one before had fallen";
}

TEST_F(ChartedDay, LeavesInFrontWhatWasThere) {
  BeginStreaming();
  const std::string front = spreadsheet.Application()->ActiveSheet()->Name();
  Quote(Trade(28, 1000));
  EXPECT_EQ(spreadsheet.Application()->ActiveSheet()->Name(), front);
}

TEST_F(ChartedDay, GoesOnWhereChartsCannotFollow) {
  BeginStreaming();
  const auto sheets = spreadsheet.Application()->Worksheets();
  const std::string front = spreadsheet.Application()->ActiveSheet()->Name();
  sheets->Item(History("MSFT"))->Cells(2, 2)->Value("Volumes of mine");
  Quote(Trade(28, 1000));
  EXPECT_THAT(told.back(), HasSubstr("Charts stand still at Quotes_Vertical(MSFT): "));
  EXPECT_EQ(spreadsheet.Application()->ActiveSheet()->Name(), front);
  Quote(Trade(29, 1100));
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("28", "29"));
}

TEST_F(ChartedDay, FollowsAgainWhenWhatKeptItsChartsHasGone) {
  BeginStreaming();
  const auto field = spreadsheet.Application()->Worksheets()->Item(History("MSFT"))->Cells(2, 2);
  field->Value("Volumes of mine");
  Quote(Trade(21, 1000));
  field->Value("LastVolume");
  for (int step = 2; step <= 9; ++step) Quote(Trade(20 + step, 1000 + 10 * step));
  EXPECT_THAT(told.back(), "Charts follow again at Quotes_Vertical(MSFT)");
  EXPECT_THAT(Shown("Last"), ElementsAre("25", "26", "27", "28", "29"));
}

TEST_F(ChartedDay, LeavesChartsAloneThatHaveFailedToFollowOftenEnough) {
  BeginStreaming();
  const auto field = spreadsheet.Application()->Worksheets()->Item(History("MSFT"))->Cells(2, 2);
  field->Value("Volumes of mine");
  int quotes = 0;
  while (day->Tables().HasCharts() && quotes < 1000) Quote(Trade(++quotes, 1000));
  EXPECT_EQ(quotes, day::DayCharts::kMostFailures + 127) << "1 + 2 + 4 ... that were waited for between them";
  EXPECT_THAT(told.back(),
              HasSubstr("Charts stand still for the rest of the day at Quotes_Vertical(MSFT): "));
  field->Value("LastVolume");
  for (int more = 0; more < 200; ++more) Quote(Trade(++quotes, 1000));
  EXPECT_THAT(told, Not(Contains(HasSubstr("Charts follow again"))));
}

class DayOfTwoCharts : public ChartedDay {
 protected:
  DayOfTwoCharts() {
    for (const char* tick : {"Last", "LastVolume", "Charts"}) wishes.ticks.push_back({"IBM", tick});
  }
};

TEST_F(DayOfTwoCharts, TellsOfOnesThatStandStillAfterOthersThatWereGivenUp) {
  BeginStreaming();
  const auto sheets = spreadsheet.Application()->Worksheets();
  sheets->Item(History("MSFT"))->Cells(2, 2)->Value("Volumes of mine");
  for (int quotes = 1; quotes <= day::DayCharts::kMostFailures + 127; ++quotes) Quote(Trade(quotes, 1000));
  ASSERT_THAT(told.back(), HasSubstr("for the rest of the day at Quotes_Vertical(MSFT): "));
  sheets->Item(History("IBM"))->Cells(2, 2)->Value("Volumes of mine");
  Quote(Of("IBM").Last(160).Volume(1000).Stamp("01202011093000"));
  EXPECT_THAT(told.back(), HasSubstr("Charts stand still at Quotes_Vertical(IBM): "));
}

}  // namespace
}  // namespace mirelo::testing
