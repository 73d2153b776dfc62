#include "quotetracker/market.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "quotetracker/fixed_clock.h"

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using ::testing::AnyOf;

std::string Record(Market& market, std::string_view ticker) {
  std::string text;
  AppendRecord(text, ticker, market.Look(ticker));
  return text;
}

std::vector<std::string> Path(Market& market, std::string_view ticker, int looks) {
  std::vector<std::string> path;
  for (int i = 0; i < looks; ++i) path.push_back(Record(market, ticker));
  return path;
}

FixedClock Noon() { return {"12/30/2005", "12:00:00"}; }

void ExpectBelievable(const Quote& quote) {
  EXPECT_GT(quote.bid, 0);
  EXPECT_LT(quote.bid, quote.ask);
  EXPECT_GT(quote.bid_size, 0);
  EXPECT_GT(quote.ask_size, 0);
  EXPECT_LE(quote.low, quote.last);
  EXPECT_LE(quote.last, quote.high);
  EXPECT_LE(quote.low, quote.open);
  EXPECT_LE(quote.open, quote.high);
  EXPECT_LE(quote.low_52, quote.low);
  EXPECT_LE(quote.high, quote.high_52);
  EXPECT_GT(quote.low_52, 0);
  EXPECT_EQ(quote.change, quote.last - quote.previous_close);
  EXPECT_GE(quote.last_volume, 0);
  EXPECT_LE(quote.last_volume, quote.volume);
  if (quote.trades > 0) {
    EXPECT_EQ(quote.average_trade, quote.volume / quote.trades);
  }
  for (const Price price : {quote.last, quote.bid, quote.ask, quote.open, quote.low_52, quote.high_52}) {
    EXPECT_EQ(price % kCent, 0) << price;
  }
}

TEST(Market, IsBelievableAtEachLookForManySeedsAndTickers) {
  for (std::uint64_t seed = 0; seed < 40; ++seed) {
    Market market(seed, Noon());
    for (const char* ticker : {"MSFT", "A", "BRK/A", "\xC4\xD6"}) {
      SCOPED_TRACE(std::to_string(seed) + " " + ticker);
      std::int64_t volume = 0;
      std::int32_t trades = 0;
      for (int look = 0; look < 300; ++look) {
        const Quote& quote = market.Look(ticker);
        ExpectBelievable(quote);
        EXPECT_EQ(quote.volume > volume, quote.last_volume > 0 || look == 0);
        ASSERT_GE(quote.volume, volume);
        ASSERT_GE(quote.trades, trades);
        volume = quote.volume;
        trades = quote.trades;
      }
      if (HasFailure()) return;
    }
  }
}

TEST(Market, MovesItsTickWithTheLastPrice) {
  Market market(3, Noon());
  Price before = market.Look("IBM").last;
  for (int i = 0; i < 500; ++i) {
    const Quote& quote = market.Look("IBM");
    if (quote.last > before) {
      ASSERT_EQ(quote.tick, Tick::kUp);
    }
    if (quote.last < before) {
      ASSERT_EQ(quote.tick, Tick::kDown);
    }
    if (quote.last == before && quote.last_volume > 0) {
      ASSERT_EQ(quote.tick, Tick::kSame);
    }
    before = quote.last;
  }
}

TEST(Market, WandersButNeverFarAway) {
  Market market(11, Noon());
  const Quote first = market.Look("GE");
  bool moved = false;
  for (int i = 0; i < 50'000; ++i) {
    const Quote& quote = market.Look("GE");
    moved = moved || quote.last != first.last;
    ASSERT_LT(std::abs(ToDouble(quote.change)), 0.15 * ToDouble(quote.previous_close));
  }
  EXPECT_TRUE(moved);
}

TEST(Market, HasLooksWithAndWithoutATrade) {
  Market market(5, Noon());
  int trades = 0;
  for (int i = 0; i < 1000; ++i) trades += market.Look("INTC").last_volume > 0 ? 1 : 0;
  EXPECT_GT(trades, 700);
  EXPECT_LT(trades, 900);
}

TEST(Market, TakesTheSamePathForTheSameSeed) {
  Market one(42, Noon());
  Market two(42, Noon());
  EXPECT_EQ(Path(one, "MSFT", 100), Path(two, "MSFT", 100));
}

TEST(Market, TakesTheSamePathWhateverElseIsLookedAt) {
  Market alone(42, Noon());
  Market busy(42, Noon());
  const auto expected = Path(alone, "MSFT", 50);
  std::vector<std::string> path;
  for (int i = 0; i < 50; ++i) {
    for (const char* other : {"IBM", "GE", "MSF", "MSFT1"}) busy.Look(other);
    path.push_back(Record(busy, "MSFT"));
  }
  EXPECT_EQ(path, expected);
}

TEST(Market, TakesOtherPathsForOtherSeedsAndTickers) {
  Market one(1, Noon());
  Market two(2, Noon());
  EXPECT_NE(Path(one, "MSFT", 5), Path(two, "MSFT", 5));
  Market three(1, Noon());
  EXPECT_NE(three.Look("MSFT").last, three.Look("IBM").last);
}

TEST(Market, TakesUpperAndLowerCaseForOneTicker) {
  Market one(7, Noon());
  Market two(7, Noon());
  EXPECT_EQ(one.Look("msft").last, two.Look("MSFT").last);
  EXPECT_GE(one.Look("MsFt").volume, two.Look("msft").volume);
}

TEST(Market, StampsEachLookWithTheClock) {
  FixedClock clock = Noon();
  Market market(1, clock);
  EXPECT_EQ(market.Look("A").stamp.Time(), "12:00:00");
  clock.Advance(61s);
  EXPECT_EQ(market.Look("A").stamp.Time(), "12:01:01");
  EXPECT_EQ(market.Look("A").stamp.Date(), "12/30/2005");
  EXPECT_EQ(market.Now(), clock());
}

TEST(Market, BeginsANewDayFromTheLastPrice) {
  FixedClock clock = Noon();
  Market market(1, clock);
  Quote yesterday;
  for (int i = 0; i < 50; ++i) yesterday = market.Look("A");
  clock.Advance(24h);
  const Quote today = market.Look("A");

  EXPECT_EQ(today.previous_close, yesterday.last);
  EXPECT_EQ(today.previous_volume, yesterday.volume);
  EXPECT_EQ(today.open, yesterday.last);
  EXPECT_LT(today.volume, yesterday.volume);
  EXPECT_LE(today.trades, 4);
  EXPECT_LE(today.high - today.low, 20 * kCent);
  EXPECT_GE(today.high_52, yesterday.high_52);
  EXPECT_EQ(today.stamp.Date(), "12/31/2005");
  for (int i = 0; i < 100; ++i) ExpectBelievable(market.Look("A"));
}

// Looked at for long, tickers that began near an end of the year's range leave it and take it along.
TEST(Market, WidensTheRangeOfTheYearOverManyDays) {
  FixedClock clock = Noon();
  Market market(1, clock);
  bool rose = false;
  bool fell = false;
  for (int i = 0; i < 300; ++i) {
    const std::string ticker = "T" + std::to_string(i);
    SCOPED_TRACE(ticker);
    const Quote first = market.Look(ticker);
    const bool near_the_end = first.high_52 < first.last * 107 / 100 || first.low_52 > first.last * 93 / 100;
    if (!near_the_end) continue;
    for (int day = 0; day < 60; ++day) {
      clock.Advance(24h);
      for (int look = 0; look < 100; ++look) ExpectBelievable(market.Look(ticker));
      if (HasFailure()) return;
    }
    const Quote& last = market.Look(ticker);
    rose = rose || last.high_52 > first.high_52;
    fell = fell || last.low_52 < first.low_52;
  }
  EXPECT_TRUE(rose);
  EXPECT_TRUE(fell);
}

TEST(Market, DoesNotGoBackADayWithItsClock) {
  FixedClock clock = Noon();
  Market market(1, clock);
  const std::int64_t volume = market.Look("A").volume;
  clock.Advance(-24h);
  EXPECT_GE(market.Look("A").volume, volume);
}

TEST(Market, ForgetsTickersBeyondWhatItCanRemember) {
  Market market(1, Noon(), 10);
  for (int i = 0; i < 10; ++i) market.Look("T" + std::to_string(i));
  const Quote first = market.Look("ONE MORE");
  const Quote again = market.Look("ONE MORE");
  EXPECT_EQ(first.volume, again.volume) << "a ticker beyond is new at each look";
  ExpectBelievable(first);
  const std::int64_t volume = market.Look("T5").volume;
  EXPECT_GE(market.Look("T5").volume, volume) << "one within goes on";
}

TEST(Market, ChangesEachSubscribedTickerAndNoOther) {
  Market market(1, Noon());
  const std::vector<std::string> tickers{"A", "B", "C"};
  const auto updates = market.Subscribe(tickers);
  std::vector<int> seen(tickers.size());
  for (int i = 0; i < 300; ++i) {
    const QuoteChange change = updates->Next();
    ASSERT_NE(change.quote, nullptr);
    ASSERT_EQ(change.quote->ticker, tickers.at(change.ticker));
    ++seen[change.ticker];
  }
  for (const int times : seen) EXPECT_GT(times, 50);
}

TEST(Market, ChangesNothingWhenNothingIsSubscribed) {
  Market market(1, Noon());
  EXPECT_EQ(market.Subscribe({})->Next().quote, nullptr);
}

}  // namespace
}  // namespace mirelo::quotetracker
