// What is written down of a streamed quote until it is handed to the day, and wherever its way ends before.

#include "day/quote_trail.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "automation/runtime_error.h"
#include "core/cQTData.h"
#include "day/stream_feed.h"
#include "streaming/cQTStreaming.h"
#include "support/level1_wire.h"
#include "support/manual_loop.h"
#include "support/recorded_log.h"
#include "support/stream_rig.h"
#include "wire/observed_sockets.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

struct WithTrailLoop {
  ManualLoop loop;
};

class Trail : public ::testing::Test, protected WithTrailLoop, protected StreamRig {
 protected:
  Trail() : StreamRig(loop) {
    host.Use(observed);
    trail.Watch(observed);
    feed.Follow(trail);
    feed.Quote.Subscribe([this](const cQTData&) { act(); });
    feed.Start();
  }

  static std::string Record(const char* symbol, double price) {
    return Level1Wire().Symbol(symbol).Last(price).Bytes();
  }

  wire::ObservedSockets observed{sockets, loop};
  RecordedLog log;
  day::QuoteTrail trail{log, {"MSFT", "XYZ"}};
  day::StreamFeed feed{*facade, loop, observed, {"MSFT", "IBM"}, "SWISS.SDF"};
  std::function<void()> act = [] {};
};

TEST_F(Trail, BeginsWithTheRecordAndTheValuesThatItBrought) {
  Deliver(Record("MSFT", 26.05));
  EXPECT_THAT(log.lines, ElementsAre("MSFT: a record of 21 bytes came, in a message of 21 bytes",
                                     "MSFT: quote a0: Ticker=MSFT Last=26.05"));
}

TEST_F(Trail, IsOfFollowedTickersAloneAndOfThoseInAnySpelling) {
  Deliver(Record("IBM", 1));
  EXPECT_THAT(log.lines, IsEmpty());
  Deliver(Record("msft", 1));
  EXPECT_THAT(log.lines, ElementsAre(StartsWith("msft: a record"), StartsWith("msft: quote")));
}

TEST_F(Trail, EndsAtARecordThatChangesNothing) {
  Deliver(Record("MSFT", 26.05));
  log.lines.clear();
  Deliver(Record("MSFT", 26.05));
  EXPECT_THAT(log.lines, ElementsAre(StartsWith("MSFT: a record"),
                                     "MSFT: its record changes nothing that counts, so it is no quote"));
}

TEST_F(Trail, EndsAtATickerThatNobodyHasAskedFor) {
  Deliver(Record("XYZ", 1));
  EXPECT_THAT(log.lines, ElementsAre(StartsWith("XYZ: a record"), StartsWith("XYZ: quote"),
                                     "XYZ: nobody has asked for this ticker; the quote is left out"));
}

TEST_F(Trail, EndsAtBytesThatMakeNoMessage) {
  Deliver("garbage with MSFT in it" + Record("IBM", 1));
  EXPECT_THAT(log.lines, ElementsAre(HasSubstr("MSFT: 23 bytes in which it is named are left out")));
}

TEST_F(Trail, EndsAtAQuoteThatCouldNotBeUsed) {
  act = [] { throw RuntimeError(1000, "no room"); };
  Deliver(Record("MSFT", 1));
  EXPECT_EQ(log.lines.back(), "MSFT: the quote could not be used: no room");
}

TEST_F(Trail, OfEachRecordOfAMessage) {
  Deliver(Record("MSFT", 1) + Record("IBM", 1) + Record("MSFT", 2));
  EXPECT_THAT(log.lines, ElementsAre(HasSubstr("of 62 bytes"), HasSubstr("of 62 bytes"), HasSubstr("Last=1"),
                                     HasSubstr("Last=2")));
}

}  // namespace
}  // namespace mirelo::testing
