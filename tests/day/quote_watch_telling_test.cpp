// When those who ask about quotes are told that answers have changed.

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <optional>
#include <vector>

#include "day/watching.h"
#include "day/worked_time.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

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
  EXPECT_THAT(told_cells, SizeIs(5)) << "in kTellAtMost";
  Pass(29ms);
  EXPECT_THAT(told_cells, SizeIs(5)) << "it pauses for twice as long";
  Pass(1ms);
  EXPECT_THAT(told_cells, SizeIs(10));
  for (int i = 0; i < 20; ++i) Pass(50ms);
  std::vector<std::size_t> in_turn(cells.size());
  std::iota(in_turn.begin(), in_turn.end(), std::size_t{0});
  EXPECT_EQ(told_cells, in_turn);
}

TEST_F(Watching, MeasuresByItselfHowLongTellingTakesTheProcessor) {
  constexpr auto kWork = 3 * day::QuoteWatch::kTellAtMost;
  watch.emplace(*side, [this] { return day::QuoteWatch::Clock::time_point(loop.Elapsed()); });
  Streamed();
  std::vector<Watched> cells;
  std::size_t calls = 0;
  for (int i = 0; i < 3; ++i) {
    cells.push_back(watch->Ask({About::Value, "MSFT", "Last"}, [&] {
      ++calls;
      for (const auto start = day::TimeWorked(); day::TimeWorked() - start < kWork;) continue;
    }));
  }
  BeginStreaming();
  Quote("MSFT", 27.5);
  EXPECT_EQ(calls, 1U) << "one has taken more than kTellAtMost";
  Pass(2 * kWork - 1ms);
  EXPECT_EQ(calls, 1U) << "it pauses for twice as long";
  for (int i = 0; i < 20; ++i) Pass(50ms);
  EXPECT_EQ(calls, 3U);
}

TEST_F(Watching, TellsOnceWhatChangesAgainBeforeItsTurn) {
  Streamed();
  std::vector<Watched> cells;
  std::vector<double> told_of_last;
  for (int i = 0; i < 10; ++i)
    cells.push_back(watch->Ask({About::Value, "MSFT", "Last"}, [this] { WorkFor(3ms); }));
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
  ASSERT_EQ(calls, 3U) << "in kTellAtMost";
  cells.clear();
  Pass(1s);
  EXPECT_EQ(calls, 3U);
}

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
