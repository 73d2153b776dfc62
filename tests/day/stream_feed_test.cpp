// What becomes of a quote whose handler fails or takes its time, or that nobody asked for; and when the feed
// reconnects.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "core/cQTData.h"
#include "day/stream_feed.h"
#include "streaming/cQTStreaming.h"
#include "support/error_number.h"
#include "support/level1_wire.h"
#include "support/manual_loop.h"
#include "support/memory_shortage.h"
#include "support/stream_rig.h"
#include "wire/observed_sockets.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::size_t kBytesOfMany = 256;  // asked for at once where there are many quotes, and not for one

struct WithLoop {
  ManualLoop loop;
};

class Feed : public ::testing::Test, protected WithLoop, protected StreamRig {
 protected:
  Feed() : StreamRig(loop) {
    host.Use(observed);
    feed.Status.Subscribe([this](const std::string& text) { told.push_back(text); });
    feed.Quote.Subscribe([this](const cQTData& quote) {
      prices.push_back(quote.Last_Price());
      act(quote.Last_Price());
    });
    feed.Start();
    told.clear();
  }

  // Quotes of these prices, as one chunk.
  void DeliverPrices(const std::vector<double>& of) {
    std::string chunk;
    for (const double price : of) chunk += Level1Wire().Symbol("MSFT").Last(price).Bytes();
    Deliver(chunk);
  }
  void Pass(int milliseconds) { loop.Advance(host::MessageLoop::Milliseconds(milliseconds)); }

  static std::string InSeconds(int seconds) {
    return std::to_string(seconds) + (seconds == 1 ? " second" : " seconds");
  }
  void ExpectToReconnectIn(int seconds) {
    SCOPED_TRACE(seconds);
    const std::size_t before = sockets.connections.size();
    Pass(seconds * 1'000 - 1);
    EXPECT_EQ(sockets.connections.size(), before);
    Pass(1);
    EXPECT_EQ(sockets.connections.size(), before + 1);
  }
  void ExpectToWaitOutASilenceOf(int minutes) {
    SCOPED_TRACE(minutes);
    told.clear();
    Pass(minutes * 60'000 - 1);
    EXPECT_THAT(told, IsEmpty());
    Pass(1);
    EXPECT_THAT(told, ElementsAre(HasSubstr("has said nothing for " + InSeconds(minutes * 60) +
                                            "; reconnecting in ")));
  }

  wire::ObservedSockets observed{sockets, loop};
  day::StreamFeed feed{*facade, loop, observed, {"MSFT"}, "SWISS.SDF"};
  std::function<void(double price)> act = [](double) {};
  std::vector<double> prices;
  std::vector<std::string> told;
};

TEST_F(Feed, GivesEachQuoteOnceThoughItsHandlerFails) {
  act = [](double) { throw RuntimeError(1000, "no room"); };
  DeliverPrices({1, 2, 3});
  Pass(10);
  act = [](double) {};
  DeliverPrices({4, 5});
  EXPECT_THAT(prices, ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(Feed, TakesAQuoteOfNothingForNoneAndTellsItOnce) {
  const std::string nothing = Level1Wire().Symbol("MSFT").Last(0).Bid(0).Volume(0).Bytes();
  Deliver(nothing);
  DeliverPrices({28});
  Deliver(nothing);
  EXPECT_THAT(prices, ElementsAre(28));
  EXPECT_THAT(told, ElementsAre("QuoteTracker knows no quote of MSFT"));
}

TEST_F(Feed, TakesAZeroAmongOtherValuesAndOneAloneForAQuote) {
  Deliver(Level1Wire().Symbol("MSFT").Last(0).Bid(3).Bytes());
  Deliver(Level1Wire().Symbol("MSFT").Bid(0).Bytes());
  Deliver(Level1Wire().Symbol("MSFT").Last(0).Volume(5).Bytes());
  EXPECT_THAT(prices, ElementsAre(0, 0, 0));
  EXPECT_THAT(told, IsEmpty());
}

// As an office does: what asked for the quotes is taken off the sheet while some of them are still being
// read.
TEST_F(Feed, IsHeardOfNoMoreWhenItIsGoneBeforeTheChunkIsRead) {
  auto other = std::make_unique<day::StreamFeed>(*facade, loop, observed, std::vector<std::string>{"IBM"},
                                                 "SWISS.SDF");
  int quotes = 0;
  other->Quote.Subscribe([&](const cQTData&) {
    ++quotes;
    loop.StartTimer(host::MessageLoop::Milliseconds(0), [&] { other.reset(); });
  });
  other->Start();
  std::string chunk;
  for (const double price : {1, 2, 3}) chunk += Level1Wire().Symbol("IBM").Last(price).Bytes();
  Deliver(chunk);
  Pass(10);
  EXPECT_EQ(other, nullptr);
  EXPECT_EQ(quotes, 1);
}

TEST_F(Feed, TellsOfEachFailureOnce) {
  act = [](double price) {
    if (price == 5) throw RuntimeError(1000, "no sheet");
    throw RuntimeError(1000, "no room");
  };
  DeliverPrices({1, 2, 3, 4, 5, 6});
  EXPECT_THAT(told, ElementsAre(HasSubstr("MSFT could not be used (no room)"), HasSubstr("(no sheet)")));
}

TEST_F(Feed, GoesOnTellingOfThousandsOfDifferentFailuresNoLonger) {
  act = [](double price) { throw RuntimeError(1000, "no room for " + std::to_string(price)); };
  for (int price = 1; price <= 1000; ++price) DeliverPrices({static_cast<double>(price)});
  EXPECT_EQ(told.size(), day::StreamFeed::kMostToldFailures);
  EXPECT_EQ(prices.size(), 1000U);
}

TEST_F(Feed, SurvivesAPersonWhoCannotBeTold) {
  feed.Status.Subscribe([](const std::string&) { throw RuntimeError(1000, "no terminal"); });
  act = [](double) { throw RuntimeError(1000, "no room"); };
  DeliverPrices({1, 2});
  EXPECT_THAT(prices, ElementsAre(1, 2));
}

TEST_F(Feed, GivesEachQuoteOnceWhileAHandlerRunsTheLoop) {
  act = [&](double) { Pass(5); };
  DeliverPrices({1, 2, 3});
  Pass(10);
  EXPECT_THAT(prices, ElementsAre(1, 2, 3));
}

TEST_F(Feed, GivesTheQuotesOfAChunkThoughAHandlerHangsUp) {
  act = [&](double price) {
    if (price == 1) feed.Stop();
  };
  DeliverPrices({1, 2, 3});
  EXPECT_THAT(prices, ElementsAre(1, 2, 3));
  EXPECT_EQ(loop.NextTimer(), std::nullopt);
}

// While another stream tells of its quotes, this one's wait for a look into its buffer; and while that looks,
// those that come wait for the next.
TEST_F(Feed, GivesTheQuotesThatWaitThoughAHandlerHangsUp) {
  const auto deliver = [&](double price) {
    sockets.connections[0]->Deliver(Level1Wire().Symbol("MSFT").Last(price).Bytes());
  };
  deliver(1);
  const auto other = std::make_shared<cQTStreaming>();
  other->QTDatas.Subscribe([&] { deliver(2); });
  other->connect();
  sockets.connections[1]->Deliver(Level1Wire().Symbol("IBM").Last(1).Bytes());
  act = [&](double price) {
    if (price != 2) return;
    deliver(3);
    feed.Stop();
  };
  EXPECT_THAT(prices, ElementsAre(1));
  Pass(10);
  EXPECT_THAT(prices, ElementsAre(1, 2, 3));
}

// Nobody else says so of quotes that were found by a look into the buffer.
TEST_F(Feed, RestsBehindTheQuotesThatHaveWaited) {
  std::vector<std::size_t> rests;
  feed.Rested.Subscribe([&] { rests.push_back(prices.size()); });
  const auto deliver = [&](double price) {
    sockets.connections[0]->Deliver(Level1Wire().Symbol("MSFT").Last(price).Bytes());
  };
  deliver(1);
  const auto other = std::make_shared<cQTStreaming>();
  other->QTDatas.Subscribe([&] { deliver(2); });
  other->connect();
  sockets.connections[1]->Deliver(Level1Wire().Symbol("IBM").Last(1).Bytes());
  EXPECT_THAT(rests, ElementsAre(1));
  Pass(10);
  feed.Stop();
  EXPECT_THAT(rests, ElementsAre(1, 2)) << "and not where nothing has come";
}

// The memory that is asked for to give taken quotes back.
TEST_F(Feed, GivesEachQuoteOnceThoughMemoryIsShortBehindIt) {
  const std::vector<double> many{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
  DeliverPrices({1});
  prices.clear();
  const auto other = std::make_shared<cQTStreaming>();
  other->QTDatas.Subscribe([&] {
    for (const double price : many)
      sockets.connections[0]->Deliver(Level1Wire().Symbol("MSFT").Last(price).Bytes());
  });
  other->connect();
  sockets.connections[1]->Deliver(Level1Wire().Symbol("IBM").Last(1).Bytes());
  std::optional<MemoryShortage> shortage;
  act = [&](double price) {
    if (price == many.back()) shortage.emplace(kBytesOfMany);
  };
  Pass(10);
  EXPECT_EQ(prices, many);
}

TEST_F(Feed, LeavesOutQuotesThatWereNotAskedFor) {
  Deliver(Level1Wire().Symbol("IBM").Last(1));
  Deliver(Level1Wire().Last(2));
  Deliver(Level1Wire().Symbol("msft").Last(3));
  Deliver(Level1Wire().Symbol("IBM").Last(4));
  EXPECT_THAT(prices, ElementsAre(3));
  EXPECT_THAT(told, ElementsAre(HasSubstr("not asked for")));
}

TEST_F(Feed, TellsOnceAConnectionThatItStreams) {
  for (int i = 0; i < 3; ++i) Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
  EXPECT_THAT(told, ElementsAre("Streaming"));
}

// The guide tells these pauses, a page of the design the silences.
TEST_F(Feed, ReconnectsAfterPausesThatDoubleFromASecondToAMinute) {
  for (const int seconds : {1, 2, 4, 8, 16, 32, 60, 60}) {
    sockets.Newest().Drop();
    EXPECT_EQ(told.back(), "reset by peer; reconnecting in " + InSeconds(seconds));
    ExpectToReconnectIn(seconds);
  }
}

TEST_F(Feed, PausesForASecondAgainOnceItHasStreamed) {
  for (const int seconds : {1, 2, 4}) {
    sockets.Newest().Drop();
    Pass(seconds * 1'000);
  }
  Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
  sockets.Newest().Drop();
  ExpectToReconnectIn(1);
}

TEST_F(Feed, ReconnectsAfterSilencesThatDoubleFromAMinuteToAnHour) {
  int pause = 1;
  for (const int minutes : {1, 2, 4, 8, 16, 32, 60, 60}) {
    ExpectToWaitOutASilenceOf(minutes);
    ExpectToReconnectIn(pause);
    pause = std::min(2 * pause, 60);
  }
}

TEST_F(Feed, WaitsOutAMinuteAgainOnceAQuoteHasCome) {
  ExpectToWaitOutASilenceOf(1);
  ExpectToReconnectIn(1);
  DeliverPrices({28});
  Pass(120'000);  // for so long it listens, since it was silent before
  ExpectToWaitOutASilenceOf(1);
}

TEST_F(Feed, IsNotHeldByBytesThatAreNoMessage) {
  for (int second = 0; second < 60; ++second) {
    Deliver("\xFE\xFE\xFE");
    Pass(1'000);
  }
  EXPECT_THAT(told,
              Contains(HasSubstr("has sent nothing that can be understood for 60 seconds; reconnecting")));
}

// The request that ends the subscriptions may be the one too many of a peer that reads nothing.
TEST_F(Feed, StaysStoppedThoughItsConnectionIsGivenUp) {
  feed.Stop();
  observed.Dropped.Raise("QuoteTracker does not read what it is sent");
  EXPECT_EQ(loop.NextTimer(), std::nullopt);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(Feed, StaysStoppedThoughItWasToldOfTheLossAtThatMoment) {
  feed.Status.Subscribe([&](const std::string&) { feed.Stop(); });
  sockets.Newest().Drop();
  EXPECT_EQ(loop.NextTimer(), std::nullopt);
}

// A head that strays into the stream may hold back what comes behind it for some seconds, but not more.
TEST_F(Feed, GivesQuotesBehindAStrayHead) {
  Deliver(Level1Wire().Id(4).Length(30'000).Bytes());
  for (const double price : {1, 2, 3}) {
    DeliverPrices({price});
    Pass(200);
  }
  Pass(5'000);
  EXPECT_THAT(prices, ElementsAre(1, 2, 3));
  EXPECT_THAT(told, ElementsAre(HasSubstr("do not end")));
}

// A chunk that fails is told where the loop is run, and what was decoded before it is not lost.
TEST_F(Feed, LosesOfADamagedChunkOnlyWhatLiesBehindTheDamage) {
  bool done = false;
  loop.StartTimer(host::MessageLoop::Milliseconds(1), [&] {
    const std::string endless_text = Level1Wire("S1").Id(1).Raw("NO END").Bytes();
    Deliver(Level1Wire().Symbol("MSFT").Last(1).Bytes() + endless_text);
  });
  loop.StartTimer(host::MessageLoop::Milliseconds(2), [&] {
    DeliverPrices({2});
    done = true;
  });
  loop.SkipWaits();
  feed.RunUntil([&] { return done; });
  EXPECT_THAT(prices, ElementsAre(1, 2));
  EXPECT_THAT(told, Contains(HasSubstr("Quotes were lost")));
}

// Reconnecting may fail for good, as when a setting was damaged meanwhile. Its timer may fall due while a
// stream serves the loop behind a quote, where failures are dropped.
TEST_F(Feed, EndsWithTheErrorOfReconnectingWhereverThatCame) {
  const auto other = std::make_shared<cQTStreaming>();
  other->connect();
  loop.StartTimer(day::StreamFeed::kFirstPause,
                  [&] { sockets.connections[1]->Deliver(Level1Wire().Symbol("IBM").Last(1).Bytes()); });
  sockets.connections[0]->Drop();
  Setting("SocketPort", "no number");
  loop.SkipWaits();
  EXPECT_EQ(NumberOf([&] { feed.RunUntil([] { return false; }); }), 13);
  EXPECT_EQ(loop.Elapsed(), day::StreamFeed::kFirstPause);
}

}  // namespace
}  // namespace mirelo::testing
