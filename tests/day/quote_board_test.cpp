#include "day/quote_board.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/level1_wire.h"
#include "support/manual_loop.h"
#include "support/stream_rig.h"

namespace mirelo::testing {
namespace {

using day::QuoteBoard;
using day::QuoteFields;
using day::QuoteRow;

constexpr const char* kArrivalDate = "01/20/2011";
constexpr const char* kArrivalTime = "08:36:13";
constexpr const char* kStamp = "01202011093000";

// How a column comes over the wire: as a value that is not 0, and as what is nothing but was carried.
struct Carried {
  const char* column;
  Level1Wire (*value)();
  const char* shown;
  Level1Wire (*zero)();
};

const Carried kCarried[] = {
    {"Last", [] { return Level1Wire().Last(28.35); }, "28.35", [] { return Level1Wire().Last(0); }},
    {"Change", [] { return Level1Wire().Change(0.5); }, "0.5", [] { return Level1Wire().Change(0); }},
    {"Bid", [] { return Level1Wire().Bid(28.3); }, "28.3", [] { return Level1Wire().Bid(0); }},
    {"Ask", [] { return Level1Wire().Ask(28.4); }, "28.4", [] { return Level1Wire().Ask(0); }},
    {"BidSize", [] { return Level1Wire().Integer(9, 300); }, "300",
     [] { return Level1Wire().Integer(9, 0); }},
    {"AskSize", [] { return Level1Wire().Integer(10, 400); }, "400",
     [] { return Level1Wire().Integer(10, 0); }},
    {"Volume", [] { return Level1Wire().Volume(1000); }, "1000", [] { return Level1Wire().Volume(0); }},
    {"High", [] { return Level1Wire().High(29); }, "29", [] { return Level1Wire().High(0); }},
    {"Low", [] { return Level1Wire().Low(27); }, "27", [] { return Level1Wire().Low(0); }},
    {"Open", [] { return Level1Wire().Double(7, 28); }, "28", [] { return Level1Wire().Double(7, 0); }},
    {"52w High", [] { return Level1Wire().Double(16, 35); }, "35", [] { return Level1Wire().Double(16, 0); }},
    {"52w Low", [] { return Level1Wire().Double(17, 20); }, "20", [] { return Level1Wire().Double(17, 0); }},
    {"AvgTrade", [] { return Level1Wire().Integer(21, 150); }, "150",
     [] { return Level1Wire().Integer(21, 0); }},
    {"NumTrades", [] { return Level1Wire().Integer(20, 12); }, "12",
     [] { return Level1Wire().Integer(20, 0); }},
};

class Board : public ::testing::Test {
 protected:
  Board() {
    rig.stream->DovantaFormatUserDate("mm/dd/yyyy");
    rig.stream->connect();
  }

  // The quote of a record with these fields. A price that moves each time makes it count as one.
  std::shared_ptr<cQTData> Quote(const Level1Wire& fields, std::string_view column) {
    ++price_;
    const Level1Wire record = Level1Wire(fields).Symbol("MSFT");
    rig.Deliver(column == "Last" ? Level1Wire(record).Bid(price_) : Level1Wire(record).Last(price_));
    const auto quotes = rig.Take();
    return quotes.size() == 1 ? quotes.front() : throw std::logic_error("no quote was published");
  }
  // What the column's cell shows when a quote with these fields has come, and what the quote itself does.
  std::string Cell(const Level1Wire& fields, std::string_view column) {
    board.Take(*Quote(fields, column));
    return Of(board.Rows().at(0), column);
  }
  std::string Field(const Level1Wire& fields, std::string_view column) {
    return Of(QuoteFields(*Quote(fields, column)), column);
  }
  static std::string Of(const QuoteRow& row, std::string_view column) {
    const auto& columns = QuoteBoard::AllColumns();
    return row.at(static_cast<std::size_t>(std::ranges::find(columns, column) - columns.begin())).ToText();
  }

  ManualLoop loop;
  StreamRig rig{loop};
  QuoteBoard board{QuoteBoard::AllColumns(), {"MSFT"}};

 private:
  double price_ = 1000;
};

TEST_F(Board, ShowsWhatARecordCarriesZerosAmongItAndKeepsWhatItLacks) {
  for (const auto& [column, value, shown, zero] : kCarried) {
    SCOPED_TRACE(column);
    EXPECT_EQ(Cell(Level1Wire(), column), "");
    EXPECT_EQ(Cell(value(), column), shown);
    EXPECT_EQ(Cell(Level1Wire(), column), shown);
    EXPECT_EQ(Cell(zero(), column), "0");
    EXPECT_EQ(Cell(Level1Wire(), column), "0");
    EXPECT_EQ(Cell(value(), column), shown);
    board = QuoteBoard(QuoteBoard::AllColumns(), {"MSFT"});
  }
}

TEST_F(Board, KnowsAllColumns) {
  std::vector<std::string> columns{"Ticker", "LastVolume", "Tick", "Date", "Time"};
  for (const Carried& carried : kCarried) columns.emplace_back(carried.column);
  EXPECT_THAT(QuoteBoard::AllColumns(), ::testing::UnorderedElementsAreArray(columns));
}

TEST_F(Board, ShowsWhenAQuoteWithAStampArrived) {
  EXPECT_EQ(Cell(Level1Wire(), "Date"), "");
  EXPECT_EQ(Cell(Level1Wire().Stamp(kStamp), "Date"), kArrivalDate);
  EXPECT_EQ(Cell(Level1Wire(), "Time"), kArrivalTime) << "it stays that of the last stamp";
  rig.clock.Advance(60);
  EXPECT_EQ(Cell(Level1Wire(), "Time"), kArrivalTime);
  EXPECT_EQ(Cell(Level1Wire().Stamp(kStamp), "Time"), "08:37:13");
}

// The wire's tick is dropped, so there is nothing to be shown.
TEST_F(Board, LeavesTheTickEmpty) { EXPECT_EQ(Cell(Level1Wire().Fixed(14, "+"), "Tick"), ""); }

TEST_F(Board, ShowsTheVolumeOfTheNewestQuoteAlone) {
  const char* column = "LastVolume";
  EXPECT_EQ(Cell(Level1Wire(), column), "0");
  EXPECT_EQ(Cell(Level1Wire().Volume(1000), column), "0");
  EXPECT_EQ(Cell(Level1Wire().Volume(1500), column), "500");
  EXPECT_EQ(Cell(Level1Wire(), column), "0") << "no trade";
}

TEST_F(Board, KeepsTheDoubleOfTheWireToItsLastBit) {
  const double odd = 28.35 - 28.3;
  board.Take(*Quote(Level1Wire().Change(odd), "Change"));
  const auto& columns = QuoteBoard::AllColumns();
  const auto place = static_cast<std::size_t>(std::ranges::find(columns, "Change") - columns.begin());
  EXPECT_EQ(board.Rows().at(0).at(place).ToNumber(), odd);
  EXPECT_EQ(Cell(Level1Wire(), "Change"), "5.00000000000007E-02");
}

TEST_F(Board, GivesAQuoteToTheFirstOfTwoRowsOfATickerAndToNoOtherTickers) {
  board = QuoteBoard({"Ticker", "Last"}, {"IBM", "IBM", "msft"});
  board.Take(*Quote(Level1Wire(), "Bid"));
  ASSERT_EQ(board.Rows().size(), 3U);
  EXPECT_EQ(day::TextsOf(board.Rows()[2]), (std::vector<std::string>{"msft", "1001"}));
  EXPECT_TRUE(board.Rows()[1][1].IsNothing());
}

TEST_F(Board, ShowsNoVolumeBelowZeroWhereTheDaysVolumeBeginsAnew) {
  const char* column = "LastVolume";
  EXPECT_EQ(Cell(Level1Wire().Volume(1500), column), "0");
  const auto anew = Quote(Level1Wire().Volume(200), column);
  EXPECT_EQ(anew->Last_Volume(), -1300) << "the class counts on";
  board.Take(*anew);
  EXPECT_EQ(Of(board.Rows().at(0), column), "0");
  EXPECT_EQ(Of(QuoteFields(*anew), column), "0");
  EXPECT_EQ(Cell(Level1Wire().Volume(250), column), "50");
}

TEST_F(Board, ShowsAVolumeThatIsTooGreatForTheStreamClass) {
  const auto great = Quote(Level1Wire().Volume(3'000'000'500), "Volume");
  EXPECT_EQ(great->Volume(), -1'294'966'796) << "the class reads a sign";
  board.Take(*great);
  EXPECT_EQ(Of(board.Rows().at(0), "Volume"), "3000000500");
  EXPECT_EQ(Of(QuoteFields(*great), "Volume"), "3000000500");
  for (const std::int64_t volume : {4'294'967'295, 4'294'967'296, 4'294'968'296, 999'999'999'999'999}) {
    EXPECT_EQ(Cell(Level1Wire().Volume(volume), "Volume"), std::to_string(volume));
  }
}

TEST_F(Board, CountsOnWithVolumesThatAreTooGreatForTheStreamClass) {
  const char* column = "LastVolume";
  const std::pair<std::int64_t, const char*> days[] = {
      {2'147'483'600, "0"},          {2'147'483'700, "100"}, {2'147'483'750, "50"},
      {4'294'967'290, "2147483540"}, {4'294'967'390, "100"}, {4'294'967'396, "6"},
      {8'589'934'700, "4294967304"}, {5'000, "0"},           {5'100, "100"},
      {4'294'972'396, "4294967296"},
  };
  for (const auto& [volume, traded] : days) {
    SCOPED_TRACE(volume);
    const auto quote = Quote(Level1Wire().Volume(volume), column);
    board.Take(*quote);
    EXPECT_EQ(Of(board.Rows().at(0), column), traded);
    EXPECT_EQ(Of(QuoteFields(*quote), column), traded);
  }
}

TEST_F(Board, BeginsGreatVolumesAnewWithTheDay) {
  const auto cell = [&](std::int64_t volume, const char* stamp) {
    return Cell(Level1Wire().Volume(volume).Stamp(stamp), "LastVolume");
  };
  EXPECT_EQ(cell(5'000'000'000, "01202011093000"), "0");
  EXPECT_EQ(cell(5'000'000'100, "01202011093001"), "100");
  EXPECT_EQ(cell(6'000'000'000, "01212011093000"), "0");
  EXPECT_EQ(cell(6'000'000'007, "01212011093001"), "7");
  EXPECT_EQ(cell(700, "01222011093000"), "0");
}

TEST_F(Board, LeavesTheTickerAsItWasGiven) {
  board = QuoteBoard(QuoteBoard::AllColumns(), {"Msft"});
  EXPECT_EQ(Cell(Level1Wire(), "Ticker"), "Msft");
}

TEST_F(Board, PrintsOfOneQuoteWhatItsRecordCarriedAndNothingElse) {
  for (const auto& [column, value, shown, zero] : kCarried) {
    SCOPED_TRACE(column);
    EXPECT_EQ(Field(value(), column), shown);
    EXPECT_EQ(Field(Level1Wire(), column), "");
    EXPECT_EQ(Field(zero(), column), "0");
  }
  EXPECT_EQ(Field(Level1Wire(), "LastVolume"), "") << "no volume, no trade";
  EXPECT_EQ(Field(Level1Wire().Volume(1000), "LastVolume"), "0");
  EXPECT_EQ(Field(Level1Wire(), "Date"), "");
  EXPECT_EQ(Field(Level1Wire().Stamp(kStamp), "Date"), kArrivalDate);
  EXPECT_EQ(Field(Level1Wire(), "Ticker"), "MSFT");
}

// A value that lies behind the end of what came reads as 0, but nobody sent it.
TEST_F(Board, TakesNoValueThatDidNotComeWhole) {
  board.Take(*Quote(Level1Wire().Integer(10, 400), "AskSize"));
  const std::string record = Level1Wire().Symbol("MSFT").Last(1).Id(10).Raw("\x01");
  rig.Deliver(record);
  const auto quotes = rig.Take();
  ASSERT_EQ(quotes.size(), 1U);
  EXPECT_EQ(quotes.front()->Ask_Size(), 0);
  board.Take(*quotes.front());
  EXPECT_EQ(Of(board.Rows().at(0), "AskSize"), "400");
}

}  // namespace
}  // namespace mirelo::testing
