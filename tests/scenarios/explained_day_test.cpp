// What a day writes down of the quotes that somebody asks after, wherever their way ends.

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/variant.h"
#include "day/quote_trail.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "scenarios/day_rig.h"
#include "support/level1_wire.h"
#include "support/memory_shortage.h"
#include "support/recorded_log.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr int kManyQuotes = 300;

class ExplainedDay : public Day {
 protected:
  ~ExplainedDay() override { day.reset(); }  // before the trail
  ExplainedDay() {
    wishes.tickers = {"MSFT", "IBM"};
    wishes.columns = {"Ticker", "Last", "Volume", "LastVolume", "Time"};
    wishes.settings = {{"UpdateEvery", "1"}, {"VerticalTable", "1"}, {"RowsLimit", "20"}};
    wishes.ticks = {{"MSFT", "Last"}};
    trail = &followed;
  }

  void BeginStreaming() {
    wishes.settings.push_back({"Seconds", "0"});
    wishes.settings.push_back({"ComQuoteSource", "Alpstein Finance (delayed)"});
    Begin();
    winsock.Newest().Deliver("OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>");
    winsock.Newest().Deliver("LO<STATUSCODE>0</STATUSCODE>");
    winsock.Newest().Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
    log.lines.clear();
  }
  static std::string Quote(const char* ticker, double last) {
    return Level1Wire().Symbol(ticker).Last(last).Bytes();
  }
  // Quotes of one chunk, and the time until they stand in their cells.
  void Deliver(const std::string& quotes) {
    winsock.Newest().Deliver(quotes);
    Pass(1s);
  }

  void BeginAsking() {
    wishes.settings.push_back({"Seconds", "15"});
    internet.answer = [this](const AnsweringInternet::Request& request) {
      return request.resource.starts_with("/req?GetLastQuote(") ? reply : portfolios(request);
    };
    Begin();
  }
  static std::string Line(const std::string& ticker, const std::string& last, const std::string& volume) {
    return "\r\n" + ticker + ",01/20/2011,09:30:00," + last + ",28,29,-0.10,U," + volume +
           ",29,28,100,200,77,150,12,28.5,20,35";
  }

  RecordedLog log;
  day::QuoteTrail followed{log, {"MSFT", "IBM", "DELL"}};
  std::optional<std::string> reply;
};

TEST_F(ExplainedDay, SaysWhichCellsAQuoteWasWrittenTo) {
  BeginStreaming();
  Deliver(Quote("MSFT", 28.35));
  EXPECT_EQ(log.lines.back(),
            "MSFT: written to Dovanta2_Quotes!B3:E3; history at the foot of Quotes_Vertical(MSFT)!A3");
}

TEST_F(ExplainedDay, SaysThatATickerHasNoHistory) {
  BeginStreaming();
  Deliver(Quote("IBM", 160));
  EXPECT_EQ(log.lines.back(), "IBM: written to Dovanta2_Quotes!B4:E4; it has no history");
}

TEST_F(ExplainedDay, SaysThatTheTableShowsTheNewestOfSeveral) {
  BeginStreaming();
  Deliver(Quote("MSFT", 1) + Quote("IBM", 1) + Quote("MSFT", 2) + Quote("MSFT", 3));
  EXPECT_THAT(log.lines, Contains(HasSubstr(
                             "MSFT: written to Dovanta2_Quotes!B3:E3, the newest of 3 quotes since the last "
                             "time; history at the foot of Quotes_Vertical(MSFT)!A3:A5")));
}

TEST_F(ExplainedDay, SaysThatTheTableHasNoRowOfATicker) {
  wishes.settings.push_back({"Seconds", "0"});
  wishes.settings.push_back({"ComQuoteSource", "Alpstein Finance (delayed)"});
  Begin();
  EXPECT_THAT(log.lines, ElementsAre("DELL: the quote table has no row of this ticker"));
}

TEST_F(ExplainedDay, SaysWhatWasAnsweredAndThatNothingIsNew) {
  reply = "OK" + Line("MSFT", "28.35", "1000") + Line("IBM", "160.5", "5");
  BeginAsking();
  EXPECT_THAT(
      log.lines,
      Contains(HasSubstr("MSFT: QuoteTracker was asked and sent Ticker=MSFT Last=28.35 Volume=1000")));
  log.lines.clear();
  Pass(15s);
  EXPECT_THAT(log.lines, Contains("MSFT: nothing is new but the time, so history gets no row"));
  EXPECT_THAT(log.lines, Contains("MSFT: written to Dovanta2_Quotes!B3:E3; not to its history"))
      << "the time is written all the same";
  log.lines.clear();
  reply = std::nullopt;
  Pass(15s);
  EXPECT_THAT(log.lines, Not(Contains(HasSubstr("written to"))));
}

TEST_F(ExplainedDay, SaysWhatWasWrongWithAnAnswerEachTime) {
  reply = "OK" + Line("MSFT", "28.35", "many") + Line("IBM", "160.5", "5");
  BeginAsking();
  Pass(15s);
  const std::string flaw = "MSFT: The volume is no number, so LastVolume stays empty, for MSFT (\"many\")";
  EXPECT_EQ(std::ranges::count(log.lines, flaw), 2);
}

TEST_F(ExplainedDay, SaysThatNothingWasAnswered) {
  reply = "ERROR";
  BeginAsking();
  EXPECT_THAT(log.lines, Contains("MSFT: QuoteTracker was asked and gave no quotes"));
}

TEST_F(ExplainedDay, SaysThatATickersCellsStayWhereNoQuoteOfItCame) {
  reply = "OK" + Line("IBM", "160.5", "5");
  BeginAsking();
  EXPECT_THAT(log.lines, Contains("MSFT: that is no quote, so what its cells hold stays"));
  EXPECT_THAT(log.lines, Not(Contains(HasSubstr("MSFT: written"))));
}

TEST_F(ExplainedDay, SaysWhichRecordsOfAnAnswerNoTickerWasGiven) {
  reply = "OK" + Line("IBM", "160.5", "5") + Line("MSFT.O", "28", "1") + Line("IBM", "161", "6");
  BeginAsking();
  EXPECT_THAT(log.lines,
              Contains("MSFT: a record that names \"MSFT.O\" is left out, as that was not asked for"));
  EXPECT_THAT(log.lines,
              Contains(AllOf(StartsWith("IBM: "), HasSubstr("of the reply in which it is named"))));
}

TEST_F(ExplainedDay, SaysWhichRowOfATickerThatStandsTwiceGetsItsQuotes) {
  behind_go = [this] { spreadsheet.Application()->Worksheets()->Item(kTable)->Cells(5, 1)->Value("MSFT"); };
  BeginStreaming();
  Deliver(Quote("MSFT", 1));
  EXPECT_THAT(log.lines,
              Contains("MSFT: the ticker stands again at Dovanta2_Quotes!B5:E5, which get nothing: a "
                       "streamed quote goes to its first row"));
  EXPECT_EQ(Text(kTable, 3, 2), "1");
  EXPECT_EQ(Text(kTable, 5, 2), "");
}

TEST_F(ExplainedDay, SaysWhichQuotesAreBeyondTheLimitOfAHistory) {
  wishes.settings = {{"UpdateEvery", "1"}, {"VerticalTable", "1"}, {"RowsLimit", "2"}};
  BeginStreaming();
  std::string quotes;
  for (int price = 1; price <= 5; ++price) quotes += Quote("MSFT", price);
  Deliver(quotes);
  EXPECT_THAT(log.lines,
              Contains("MSFT: written to Dovanta2_Quotes!B3:E3, the newest of 5 quotes since the last time; "
                       "history at the foot of Quotes_Vertical(MSFT)!A3:A4, without the 3 oldest of them, "
                       "which are beyond its limit"));
  log.lines.clear();
  Deliver(Quote("MSFT", 6));
  EXPECT_THAT(log.lines, Contains("MSFT: written to Dovanta2_Quotes!B3:E3; history at the foot of "
                                  "Quotes_Vertical(MSFT)!A3:A4"));
}

TEST_F(ExplainedDay, SaysWhichQuotesASheetHasNoRoomFor) {
  wishes.settings = {{"UpdateEvery", "1"}, {"VerticalTable", "1"}, {"RowsLimit", "0"}};
  behind_go = [this] {
    const auto sheet = spreadsheet.Application()->Worksheets()->Item(History("MSFT"));
    sheet->Cells(sheet->Rows()->Count() - 2, 1)->Value(1);
  };
  BeginStreaming();
  Deliver(Quote("MSFT", 1) + Quote("MSFT", 2) + Quote("MSFT", 3));
  EXPECT_THAT(
      log.lines,
      Contains("MSFT: written to Dovanta2_Quotes!B3:E3, the newest of 3 quotes since the last time; "
               "history at the foot of Quotes_Vertical(MSFT)!A1048575:A1048576, without the 1 newest of "
               "them, as it has no room left"));
  Deliver(Quote("MSFT", 4));
  EXPECT_EQ(log.lines.back(), "MSFT: written to Dovanta2_Quotes!B3:E3; its history has no room left");
  EXPECT_EQ(std::ranges::count(
                told, "A vertical table has reached the foot of its sheet; its later rows are not kept"),
            1);
}

TEST_F(ExplainedDay, SaysThatNoColumnShowsAnythingOfAQuote) {
  wishes.columns = {"Ticker", "Bid"};
  wishes.ticks.clear();
  BeginStreaming();
  Deliver(Quote("MSFT", 1));
  EXPECT_THAT(log.lines, Contains("MSFT: no column of the quote table shows any of it"));
}

TEST_F(ExplainedDay, SaysThatAQuoteIsInNoCellOfATableOfTickersAlone) {
  wishes.columns = {"Ticker"};
  wishes.ticks.clear();
  BeginStreaming();
  Deliver(Quote("IBM", 1));
  EXPECT_EQ(log.lines.back(),
            "IBM: written to no cell, as the quote table has no column but the ticker's; it has no history");
}

TEST_F(ExplainedDay, SaysThatAQuoteCouldNotBeWritten) {
  wishes.settings = {{"UpdateEvery", "1"}, {"VerticalTable", "1"}, {"RowsLimit", "0"}};
  BeginStreaming();
  std::string quotes;
  for (int price = 1; price <= kManyQuotes; ++price) quotes += Quote("MSFT", price);
  log.lines.reserve(std::size_t{10} * kManyQuotes);
  {
    const MemoryShortage shortage(kManyQuotes * sizeof(Variant));  // the block of history
    winsock.Newest().Deliver(quotes);
  }
  EXPECT_THAT(log.lines, Contains("MSFT: it could not be written: Out of memory"));
  EXPECT_THAT(log.lines, Not(Contains(HasSubstr("written to"))));
  log.lines.clear();
  day.reset();
  EXPECT_THAT(log.lines, IsEmpty()) << "its way has ended once";
}

// Of quotes that come at once not all have time for a write of their own.
TEST_F(ExplainedDay, SaysThatTheDayIsOverBeforeAQuoteCouldBeWritten) {
  BeginStreaming();
  for (int price = 1; price <= kManyQuotes; ++price) winsock.Newest().Deliver(Quote("MSFT", price));
  log.lines.clear();
  day.reset();
  EXPECT_THAT(log.lines, ElementsAre("MSFT: the day is over before it could be written"));
}

}  // namespace
}  // namespace mirelo::testing
