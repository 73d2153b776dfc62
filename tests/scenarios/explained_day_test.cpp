// What a day writes down of the quotes that somebody asks after, wherever their way ends.

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "day/quote_trail.h"
#include "scenarios/day_rig.h"
#include "support/level1_wire.h"
#include "support/recorded_log.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class ExplainedDay : public Day {
 protected:
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

}  // namespace
}  // namespace mirelo::testing
