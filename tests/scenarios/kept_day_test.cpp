// What a day keeps beside its workbook, of quotes that are streamed and of those that are asked for.

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "automation/text.h"
#include "day/quote_journal.h"
#include "scenarios/day_rig.h"
#include "support/level1_wire.h"
#include "support/memory_journal.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::SizeIs;

class KeptDay : public Day {
 protected:
  KeptDay() {
    wishes.tickers = {"MSFT", "IBM"};
    wishes.columns = {"Ticker", "Last", "Bid", "Volume", "LastVolume", "High", "Date", "Time"};
    wishes.settings = {{"UpdateEvery", "1"}, {"VerticalTable", "1"}, {"RowsLimit", "2"}};
    wishes.ticks = {{"MSFT", "Last"}};
    journal = &keeping;
    keeping.Begin();
  }

  void BeginStreaming() {
    wishes.settings.push_back({"Seconds", "0"});
    wishes.settings.push_back({"ComQuoteSource", "Alpstein Finance (delayed)"});
    Begin();
    Deliver("OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>");
    Deliver("LO<STATUSCODE>0</STATUSCODE>");
    Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
  }
  void Deliver(const std::string& bytes) { winsock.Newest().Deliver(bytes); }

  void BeginAsking() {
    wishes.settings.push_back({"Seconds", "15"});
    internet.answer = [this](const AnsweringInternet::Request& request) {
      return request.resource.starts_with("/req?GetLastQuote(") ? reply : portfolios(request);
    };
    Begin();
  }
  static std::string Record(const std::string& ticker, const std::string& last, const std::string& volume) {
    return "\r\n" + ticker + ",01/20/2011,09:30:00," + last + ",28,29,-0.10,U," + volume +
           ",29,28,100,200,77,150,12,28.5,20,35";
  }

  // These columns of the row with this number, from 0, as texts; nothing is "-".
  std::string Kept(std::size_t row, const std::string& columns) const {
    const auto& all = day::QuoteJournal::Columns();
    std::vector<std::string> texts;
    for (const std::string& name : Split(columns, ",")) {
      const auto column = std::ranges::find(all, name, &host::DataColumn::name);
      texts.push_back(kept.Text(row, static_cast<std::size_t>(column - all.begin())));
    }
    return Join(texts, " ");
  }

  KeptRows kept;
  std::optional<std::string> reply;
  day::QuoteJournal keeping{loop, [this] { return std::make_unique<MemoryJournal>(kept); }};
};

TEST_F(KeptDay, HasEveryStreamedQuoteWhateverTheLimitOfRows) {
  BeginStreaming();
  for (int step = 1; step <= 5; ++step) Deliver(Level1Wire().Symbol("MSFT").Last(step).Bytes());
  Deliver(Level1Wire().Symbol("IBM").Last(160).Bytes());
  Pass(2s);
  EXPECT_THAT(Column(History("MSFT"), 1), SizeIs(2)) << "the sheet's limit";
  ASSERT_THAT(kept.rows, SizeIs(6));
  EXPECT_EQ(Kept(4, "Ticker,Last"), "MSFT 5.000000");
  EXPECT_EQ(Kept(5, "Ticker,Last"), "IBM 160.000000") << "which has no history";
  EXPECT_EQ(keeping.Kept(), day->Written());
}

TEST_F(KeptDay, TellsWhatAStreamedRecordLackedFromWhatCameAsZero) {
  BeginStreaming();
  Deliver(Level1Wire().Symbol("MSFT").Last(28.35).Bid(28.3).Volume(1000).Stamp("01202011093000").Bytes());
  Deliver(Level1Wire().Symbol("MSFT").Last(28.36).Bid(0).Bytes());
  Pass(2s);
  ASSERT_THAT(kept.rows, SizeIs(2));
  EXPECT_EQ(Kept(0, "Last,Bid,Volume,LastVolume,Open,Tick"), "28.350000 28.300000 1000 0 - -");
  EXPECT_EQ(Kept(0, "Date,Time"), "2011-01-20 08:36:13");
  EXPECT_EQ(Kept(1, "Last,Bid,Volume,LastVolume,Date"), "28.360000 0.000000 - - -");
}

TEST_F(KeptDay, HasColumnsOfAStreamThatTheTableDoesNotShow) {
  BeginStreaming();
  Deliver(Level1Wire().Symbol("MSFT").Last(28).Double(16, 35).Bytes());
  Pass(2s);
  EXPECT_EQ(Kept(0, "52w High"), "35.000000");
}

TEST_F(KeptDay, LeavesOutTickersThatWereNotAskedFor) {
  BeginStreaming();
  Deliver(Level1Wire().Symbol("DELL").Last(1).Bytes());
  Pass(2s);
  EXPECT_THAT(kept.rows, SizeIs(0));
}

TEST_F(KeptDay, HasQuotesThatWereAskedForAsFarAsTheyAreNew) {
  reply = "OK" + Record("MSFT", "28.35", "1000") + Record("IBM", "160.5", "500");
  BeginAsking();
  Pass(15s);
  reply = "OK" + Record("MSFT", "28.40", "1000") + Record("IBM", "160.5", "500");
  Pass(15s);
  Pass(2s);
  ASSERT_THAT(kept.rows, SizeIs(3));
  EXPECT_EQ(Kept(0, "Ticker,Last,Volume,LastVolume,Date,Time"), "MSFT 28.350000 1000 0 2011-01-20 08:36:13");
  EXPECT_EQ(Kept(1, "Ticker,Last,Ask"), "IBM 160.500000 -") << "the table does not show Ask";
  EXPECT_EQ(Kept(2, "Ticker,Last"), "MSFT 28.400000");
  EXPECT_EQ(keeping.Kept(), day->Written());
}

TEST_F(KeptDay, HasNothingOfWhatAnAskedRecordBrokeOffBefore) {
  reply = "OK" + Record("MSFT", "28.35", "1000") + Record("IBM", "160.5", "500");
  BeginAsking();
  reply = "OK" + Record("MSFT", "28.35", "1000") + "\r\nIBM,01/20/2011,09:30:00,161,28,29,-0.10,U,700";
  Pass(15s);
  Pass(2s);
  ASSERT_THAT(kept.rows, SizeIs(3));
  EXPECT_EQ(Text(kTable, 4, 6), "29") << "the sheet goes on with what is known";
  EXPECT_EQ(Kept(2, "Ticker,Last,Bid,High"), "IBM 161.000000 28.000000 -");
}

}  // namespace
}  // namespace mirelo::testing
