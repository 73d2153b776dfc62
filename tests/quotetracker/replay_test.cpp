#include "quotetracker/replay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "quotetracker/fixed_clock.h"
#include "quotetracker/level1_fields.h"
#include "quotetracker/record_feed.h"
#include "quotetracker/record_reader.h"
#include "quotetracker/replay_columns.h"

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;

const std::string kDay =
    ReplayColumns::Names() +
    "\r\n"
    "MSFT,12/30/"
    "2005,09:30:00,26.50,26.49,26.51,-0.12,D,61200,26.7,26.4,12,9,300,450,136,26.62,23.82,28.25\r\n"
    "IBM,12/30/2005,09:30:02,82.2,82.15,82.25,0.5,U,1000,82.5,82,1,2,100,100,10,82,71.85,99.1\r\n"
    "MSFT,12/30/"
    "2005,09:30:04,26.55,26.54,26.56,-0.07,U,61900,26.7,26.4,3,4,700,451,137,26.62,23.82,28.25\r\n";

std::unique_ptr<Replay> FromText(const std::string& text, double speed, const Clock& clock) {
  std::istringstream stream(text);
  return std::make_unique<Replay>(stream, "day.csv", speed, clock);
}

std::string Record(Replay& replay, std::string_view ticker) {
  std::string text;
  AppendRecord(text, ticker, replay.Look(ticker));
  return text;
}

std::string Refusal(const std::string& text) {
  try {
    FromText(text, 1, FixedClock("01/01/2020", "00:00:00"));
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "accepted";
}

FixedClock Wall() { return {"01/01/2020", "00:00:00"}; }

TEST(ReplayColumns, AreTheFieldsOfARecordInTheirOrder) {
  const std::string record =
      "A,12/30/2005,09:30:00,1.01,2.02,3.03,-4.04,D,5,6.06,7.07,8,9,10,11,12,13.13,14.14,15.15";
  std::string read;
  AppendRecord(read, "A", ReplayColumns(ReplayColumns::Names()).Read(record));
  EXPECT_EQ(read, record);
}

TEST(ReplayColumns, AreToldByThePageOfTheStandIn) {
  std::ifstream file(MIRELO_SOURCE_DIR "/docs/quotetracker.md");
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  EXPECT_THAT(page, ::testing::HasSubstr("\n```\n" + ReplayColumns::Names() + "\n"));
}

TEST(Replay, ShowsEachQuoteFromItsTimeOn) {
  FixedClock wall = Wall();
  const auto replay = FromText(kDay, 1, wall);
  EXPECT_EQ(Record(*replay, "MSFT"),
            "MSFT,12/30/"
            "2005,09:30:00,26.50,26.49,26.51,-0.12,D,61200,26.70,26.40,12,9,300,450,136,26.62,23.82,28.25");
  wall.Advance(3999ms);
  EXPECT_EQ(replay->Look("MSFT").volume, 61200);
  EXPECT_EQ(replay->Look("ibm").volume, 1000);
  wall.Advance(1ms);
  EXPECT_EQ(replay->Look("MSFT").volume, 61900);
}

TEST(Replay, KeepsTheLastQuotesAtItsEnd) {
  FixedClock wall = Wall();
  const auto replay = FromText(kDay, 1, wall);
  wall.Advance(24h);
  EXPECT_EQ(replay->Look("MSFT").volume, 61900);
  EXPECT_EQ(ToStamp(replay->Now()).Time(), "09:30:00");
  EXPECT_EQ(ToStamp(replay->Now()).Date(), "12/31/2005");
}

TEST(Replay, RunsAtItsSpeed) {
  for (const double speed : {0.5, 1.0, 50.0}) {
    SCOPED_TRACE(speed);
    FixedClock wall = Wall();
    const auto replay = FromText(kDay, speed, wall);
    wall.Advance(std::chrono::milliseconds(static_cast<int>(2000 / speed) - 17));
    EXPECT_EQ(replay->Look("IBM").volume, 0);
    wall.Advance(17ms);
    EXPECT_EQ(replay->Look("IBM").volume, 1000);
  }
}

TEST(Replay, ShowsZerosForATickerWithoutAQuote) {
  FixedClock wall = Wall();
  const auto replay = FromText(kDay, 1, wall);
  wall.Advance(1s);
  EXPECT_EQ(Record(*replay, "XYZ"),
            "XYZ,12/30/2005,09:30:01,0.00,0.00,0.00,0.00,S,0,0.00,0.00,0,0,0,0,0,0.00,0.00,0.00");
}

TEST(Replay, TakesColumnsInAnyOrderAndCase) {
  const auto replay = FromText(
      "52W HIGH,time,DATE,Volume,ticker\n"
      "\n"
      "9.5 , 09:30:00,12/30/2005,12,A\n",
      1, Wall());
  EXPECT_EQ(replay->Look("A").high_52, 95'000);
  EXPECT_EQ(replay->Look("A").volume, 12);
  EXPECT_EQ(replay->Look("A").last, 0);
}

TEST(Replay, TakesAnEmptyFieldForZero) {
  const auto replay = FromText("Ticker,Date,Time,Last,Tick\nA,12/30/2005,09:30:00,,\n", 1, Wall());
  EXPECT_EQ(replay->Look("A").last, 0);
  EXPECT_EQ(replay->Look("A").tick, Tick::kSame);
}

// As mirelo writes the ticker "A\B" with a control behind it.
TEST(Replay, ReadsATickerThatIsEscaped) {
  const auto replay = FromText("Ticker,Date,Time,Last\nA\\\\B\\u0007,12/30/2005,09:30:00,1.5\n", 1, Wall());
  EXPECT_EQ(replay->Look("A\\B\a").last, *ParsePrice("1.5"));
}

TEST(Replay, TellsTheLastVolumeFromTheVolumesWhereTheFileDoesNot) {
  const auto clock = FixedClock("01/01/2020", "00:00:00");
  const std::string day = "Ticker,Date,Time,Volume\n";
  const struct {
    const char* lines;
    std::int32_t last_volume;
  } kCases[] = {
      {"GE,12/30/2005,09:30:00,500\n", 0},
      {"GE,12/30/2005,09:30:00,500\nge,12/30/2005,09:30:00,700\n", 200},
      {"GE,12/30/2005,09:30:00,500\nIBM,12/30/2005,09:30:00,9\nGE,12/30/2005,09:30:00,501\n", 1},
      {"GE,12/30/2005,09:30:00,500\nGE,12/30/2005,09:30:00,100\n", 0},
      {"GE,12/30/2005,09:30:00,0\nGE,12/30/2005,09:30:00,9999999999\n", 2147483647},
  };
  for (const auto& [lines, last_volume] : kCases) {
    EXPECT_EQ(FromText(day + lines, 1, clock)->Look("GE").last_volume, last_volume) << lines;
  }
}

TEST(Replay, PassesOverAByteOrderMark) {
  const auto replay = FromText("\xEF\xBB\xBFTicker,Date,Time\nA,12/30/2005,09:30:00\n", 1, Wall());
  EXPECT_EQ(replay->Look("A").stamp.Time(), "09:30:00");
}

TEST(Replay, SaysWhatIsWrongWithItsFile) {
  struct Case {
    const char* text;
    const char* message;
  };
  for (const Case& c :
       {Case{"", "day.csv, line 0: no column \"Ticker\""},
        Case{"Ticker,Date,Time,Price\n", "day.csv, line 1: unknown column \"Price\""},
        Case{"Ticker,Date,Last\n", "day.csv, line 1: no column \"Time\""},
        Case{"Ticker,Date,Time,DATE\n", "day.csv, line 1: two columns \"DATE\""},
        Case{"Ticker,Date,Time,\n", "day.csv, line 1: unknown column \"\""},
        Case{"Ticker,Date,Time\n", "day.csv, line 1: no quotes"},
        Case{"Ticker,Date,Time\nA,12/30/2005\n", "day.csv, line 2: fewer fields than columns"},
        Case{"Ticker,Date,Time\nA,12/30/2005,09:30:00,1\n", "day.csv, line 2: more fields than columns"},
        Case{"Ticker,Date,Time\n,12/30/2005,09:30:00\n",
             "day.csv, line 2: \"\" cannot stand in column \"Ticker\""},
        Case{"Ticker,Date,Time\nA\\B,12/30/2005,09:30:00\n",
             "day.csv, line 2: \"A\\B\" cannot stand in column \"Ticker\""},
        Case{"Ticker,Date,Time\nA,30/12/2005,09:30:00\n",
             "day.csv, line 2: \"30/12/2005\" cannot stand in column \"Date\""},
        Case{"Ticker,Date,Time\n\nA,12/30/2005,9:30\n",
             "day.csv, line 3: \"9:30\" cannot stand in column \"Time\""},
        Case{"Ticker,Date,Time,Last\nA,12/30/2005,09:30:00,1.23456\n",
             "day.csv, line 2: \"1.23456\" cannot stand in column \"Last\""},
        Case{"Ticker,Date,Time,Volume\nA,12/30/2005,09:30:00,-1\n",
             "day.csv, line 2: \"-1\" cannot stand in column \"Volume\""},
        Case{"Ticker,Date,Time,BidSize\nA,12/30/2005,09:30:00,3000000000\n",
             "day.csv, line 2: \"3000000000\" cannot stand in column \"BidSize\""},
        Case{"Ticker,Date,Time,Tick\nA,12/30/2005,09:30:00,X\n",
             "day.csv, line 2: \"X\" cannot stand in column \"Tick\""},
        Case{"Ticker,Date,Time\nA,12/30/2005,09:30:01\nA,12/30/2005,09:30:00\n",
             "day.csv, line 3: an earlier time than the line above"}}) {
    EXPECT_EQ(Refusal(c.text), c.message);
  }
}

TEST(Replay, SaysWhenItsFileCannotBeRead) {
  try {
    Replay::FromFile("/nowhere/day.csv");
    FAIL() << "read";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "/nowhere/day.csv: cannot be read: No such file or directory");
  }
}

TEST(Replay, ChangesSubscribedTickersWhenTheirTimeComes) {
  FixedClock wall = Wall();
  const auto replay = FromText(kDay, 1, wall);
  const auto updates = replay->Subscribe({"IBM", "msft"});
  EXPECT_EQ(updates->Next().quote, nullptr) << "what is due already is no change";

  wall.Advance(4s);
  const QuoteChange first = updates->Next();
  ASSERT_NE(first.quote, nullptr);
  EXPECT_EQ(first.quote->ticker, "IBM");
  EXPECT_EQ(first.ticker, 0U);
  const QuoteChange second = updates->Next();
  ASSERT_NE(second.quote, nullptr);
  EXPECT_EQ(second.quote->volume, 61900);
  EXPECT_EQ(second.ticker, 1U);
  EXPECT_EQ(updates->Next().quote, nullptr);
}

TEST(Replay, ShowsASubscriberNothingNewerThanTheChangesThatItHasYetToTake) {
  FixedClock wall = Wall();
  const auto replay = FromText(kDay, 1, wall);
  const auto updates = replay->Subscribe({"IBM", "msft", "GE"});
  wall.Advance(4s);
  EXPECT_EQ(updates->Look(1).volume, 61200);
  EXPECT_EQ(updates->Look(0).volume, 0);
  updates->Next();
  EXPECT_EQ(updates->Look(0).volume, 1000);
  EXPECT_EQ(updates->Look(1).volume, 61200);
  updates->Next();
  EXPECT_EQ(updates->Look(1).volume, 61900);
  EXPECT_EQ(updates->Look(2).ticker, "GE");
  EXPECT_EQ(updates->Look(2).last, 0);
}

// A client that is slow to take the full records has them later than it asked.
TEST(Replay, IsStreamedWithoutAnOlderQuoteBehindANewerOne) {
  FixedClock wall = Wall();
  const auto replay = FromText(kDay, 1, wall);
  RecordFeed feed(*replay, {"L1"}, 1);
  feed.Subscribe({"MSFT"});
  wall.Advance(4s);
  std::string bytes = feed.NextSnapshots();
  std::size_t count = 0;
  bytes += feed.NextUpdates(9, count);
  std::vector<double> volumes;
  for (const ReadRecord& record : RecordReader::ReadAll(bytes)) {
    volumes.push_back(record.numbers.at(static_cast<int>(Level1Field::kVolume)));
  }
  EXPECT_THAT(volumes, ::testing::ElementsAre(61200, 61900));
}

TEST(Replay, PassesOverTickersThatNobodyWants) {
  FixedClock wall = Wall();
  const auto replay = FromText(kDay, 1, wall);
  const auto updates = replay->Subscribe({"MSFT"});
  wall.Advance(1h);
  EXPECT_EQ(updates->Next().quote->volume, 61900);
  EXPECT_EQ(updates->Next().quote, nullptr);
}

}  // namespace
}  // namespace mirelo::quotetracker
