// How a day keeps its quotes beside the workbook, and what it does where that fails.

#include "day/quote_journal.h"

#include <gmock/gmock.h>

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "day/quote_value.h"
#include "snapshot/column_vocabulary.h"
#include "support/manual_loop.h"
#include "support/memory_journal.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const RuntimeError kFull(61, "no room");
const RuntimeError kLocked(70, "locked");

class Journaling : public ::testing::Test {
 protected:
  void Take(const std::string& ticker) { journal.Take(ticker, {"Ticker"}, {day::QuoteValue::Text(ticker)}); }
  std::vector<std::string> Tickers() const {
    std::vector<std::string> tickers;
    for (std::size_t row = 0; row < kept.rows.size(); ++row) tickers.push_back(kept.Text(row, 1));
    return tickers;
  }

  KeptRows kept;
  ManualLoop loop;
  std::chrono::system_clock::time_point now{std::chrono::milliseconds{1'795'356'312'007}};
  day::QuoteJournal journal{loop, [this] { return std::make_unique<MemoryJournal>(kept); },
                            [this] { return now; }};
  std::vector<std::string> failures;
  int recoveries = 0;

  Journaling() {
    journal.Failed.Subscribe([this](const RuntimeError& error) { failures.push_back(error.Description()); });
    journal.Recovered.Subscribe([this] { ++recoveries; });
  }
};

TEST_F(Journaling, HasTheColumnsOfTheVocabularyBehindTheArrival) {
  const auto& columns = day::QuoteJournal::Columns();
  EXPECT_EQ(columns.size(), kColumnVocabulary.size() + 1);
  EXPECT_EQ(columns[0], (host::DataColumn{"Arrived", host::DataType::Text}));
  EXPECT_EQ(columns[1], (host::DataColumn{"Ticker", host::DataType::Text}));
  EXPECT_EQ(columns[2], (host::DataColumn{"Last", host::DataType::Real}));
  EXPECT_EQ(columns[8], (host::DataColumn{"Volume", host::DataType::Integer}));
}

TEST_F(Journaling, NotesTheArrivalInUtcToTheMillisecond) {
  journal.Begin();
  Take("A");
  journal.End();
  EXPECT_EQ(kept.Text(0, 0), "2026-11-22T14:05:12.007Z");
}

TEST_F(Journaling, WritesValuesAsWhatTheyAre) {
  using day::QuoteValue;
  using day::Reading;
  journal.Begin();
  journal.Take(
      "A", {"Volume", "LAST", "Bid", "Ask", "Date", "Time", "Tick", "Nonsense"},
      {QuoteValue(1200.0), QuoteValue(0.0), day::ReadValue(Reading::AsNumber, "n/a"), QuoteValue(),
       day::ReadValue(Reading::AsMoment, "01/20/2011"), day::ReadValue(Reading::AsMoment, "08:36:13"),
       day::ReadValue(Reading::AsNumber, "-1"), QuoteValue(5.0)});
  journal.End();
  std::map<std::string, std::string> values;
  for (std::size_t c = 1; c < kept.rows.at(0).size(); ++c) {
    if (const std::string text = kept.Text(0, c); text != "-")
      values[day::QuoteJournal::Columns().at(c).name] = text;
  }
  EXPECT_EQ(values, (std::map<std::string, std::string>{{"Ticker", "A"},
                                                        {"Volume", "1200"},
                                                        {"Last", "0.000000"},
                                                        {"Bid", "n/a"},
                                                        {"Date", "2011-01-20"},
                                                        {"Time", "08:36:13"},
                                                        {"Tick", "-1"}}));
}

TEST_F(Journaling, GathersQuotesForASecond) {
  journal.Begin();
  Take("A");
  loop.Advance(999ms);
  Take("B");
  EXPECT_EQ(kept.appended, 0);
  loop.Advance(1ms);
  EXPECT_EQ(kept.appended, 1);
  EXPECT_THAT(Tickers(), ElementsAre("A", "B"));
  loop.Advance(1h);
  EXPECT_EQ(kept.appended, 1) << "there is nothing to write";
  Take("C");
  loop.Advance(1s);
  EXPECT_EQ(journal.Kept(), 3);
}

TEST_F(Journaling, WritesAndSettlesWhatIsLeftAtItsEnd) {
  journal.Begin();
  Take("A");
  journal.End();
  EXPECT_THAT(Tickers(), ElementsAre("A"));
  EXPECT_EQ(kept.settled, 1);
  EXPECT_EQ(journal.Lost(), 0);
}

TEST_F(Journaling, TellsAFailureOnceAndKeepsWhatWaited) {
  journal.Begin();
  kept.appending_fails = kFull;
  Take("A");
  loop.Advance(10s);
  Take("B");
  EXPECT_THAT(failures, ElementsAre("no room"));
  EXPECT_GT(kept.opened, 5) << "it is tried again";
  kept.appending_fails.reset();
  loop.Advance(1s);
  EXPECT_THAT(Tickers(), ElementsAre("A", "B"));
  EXPECT_EQ(recoveries, 1);
  EXPECT_EQ(journal.Lost(), 0);
}

TEST_F(Journaling, BeginsADayThoughItCannotBeOpened) {
  kept.opening_fails = kFull;
  journal.Begin();
  EXPECT_THAT(failures, ElementsAre("no room"));
  Take("A");
  kept.opening_fails.reset();
  loop.Advance(1s);
  EXPECT_THAT(Tickers(), ElementsAre("A"));
}

TEST_F(Journaling, BeginsNoDayWhereItIsRefused) {
  day::QuoteJournal refused(
      loop, []() -> std::unique_ptr<host::Journal> { throw host::JournalRefused(75, "it is a letter"); });
  EXPECT_THROW(refused.Begin(), host::JournalRefused);
}

TEST_F(Journaling, CountsWhatIsLostBeyondItsBoundAndAtItsEnd) {
  journal.Begin();
  kept.appending_fails = kFull;
  for (std::size_t i = 0; i < day::QuoteJournal::kMostWaiting + 3; ++i) Take("A");
  EXPECT_EQ(journal.Lost(), 3);
  journal.End();
  EXPECT_EQ(journal.Lost(), static_cast<std::int64_t>(day::QuoteJournal::kMostWaiting) + 3);
  EXPECT_EQ(journal.Kept(), 0);
}

TEST_F(Journaling, KeepsAsMuchAsThereIsRoomForOfQuotesThatHaveGathered) {
  kept.opening_fails = kFull;
  journal.Begin();
  for (int i = 0; i < 5000; ++i) Take(std::to_string(i));
  kept.opening_fails.reset();
  kept.room = 3500;
  loop.Advance(10s);
  journal.End();
  EXPECT_EQ(journal.Kept(), 3000);
  EXPECT_EQ(journal.Lost(), 2000);
  EXPECT_EQ(Tickers().back(), "2999");
  EXPECT_THAT(failures, ElementsAre("no room"));
}

TEST_F(Journaling, TriesALockedFileSeveralTimesAtItsEnd) {
  journal.Begin();
  kept.appending_fails = kLocked;
  Take("A");
  const int before = kept.opened;
  journal.End();
  EXPECT_GT(kept.opened, before + 5);
  EXPECT_EQ(journal.Lost(), 1);
}

}  // namespace
}  // namespace mirelo::testing
