// What is written down of a streamed quote until it is handed to the day, and wherever its way ends before.

#include "day/quote_trail.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "automation/runtime_error.h"
#include "core/cQTData.h"
#include "day/stream_feed.h"
#include "streaming/cQTStreaming.h"
#include "support/error_number.h"
#include "support/level1_wire.h"
#include "support/manual_loop.h"
#include "support/recorded_log.h"
#include "support/stream_rig.h"
#include "wire/observed_sockets.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
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

// A place where pieces of such bytes end means nothing.
TEST_F(Trail, EndsAtBytesThatAreLeftOutPieceByPiece) {
  const std::string before(1000, 'x');
  for (const std::size_t cut : {std::size_t{80}, std::size_t{81}, std::size_t{82}, std::size_t{83}}) {
    SCOPED_TRACE(cut);
    log.lines.clear();
    Deliver("garbage" + before + std::string("MSFT").append(cut - 4, 'y'));
    Deliver("z" + Record("IBM", 1));
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("in which it is named are left out")));
  }
}

TEST_F(Trail, EndsAtARecordThatCannotBeFollowed) {
  const std::string endless = Level1Wire().Symbol("MSFT").Id(1).Raw("NO END").Bytes();
  EXPECT_EQ(NumberOf([&] { Deliver(Record("IBM", 1) + endless); }), 9);
  EXPECT_THAT(log.lines,
              ElementsAre(StartsWith("MSFT: a record of 19 bytes came"),
                          "MSFT: its record is lost, as it cannot be followed: Subscript out of range"));
}

TEST_F(Trail, OfARecordThatCannotBeReadIsThatOfEachTicker) {
  EXPECT_EQ(NumberOf([&] { Deliver(Level1Wire().Id(1).Raw("NO END").Bytes()); }), 9);
  const std::string perhaps = "perhaps of this ticker, as the record names none: ";
  EXPECT_THAT(log.lines, ElementsAre(StartsWith("MSFT: " + perhaps + "a record of 12 bytes came"),
                                     StartsWith("XYZ: " + perhaps + "a record of 12 bytes came"),
                                     StartsWith("MSFT: " + perhaps + "its record is lost"),
                                     StartsWith("XYZ: " + perhaps + "its record is lost")));
}

TEST_F(Trail, OfWhatIsNoRecordIsThatOfEachTicker) {
  const std::string bytes = Level1Wire("XX").Symbol("IBM").Bytes();
  try {
    throw RuntimeError(9, "no place");
  } catch (const RuntimeError&) {
    trail.NoteLost({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  }
  EXPECT_THAT(log.lines, ElementsAre(AllOf(StartsWith("MSFT: perhaps"), HasSubstr("no place")),
                                     StartsWith("XYZ: perhaps")));
}

TEST_F(Trail, OfAQuoteThatNamesNoTickerIsThatOfEachTicker) {
  Deliver(Level1Wire().Last(5).Bytes());
  EXPECT_THAT(log.lines,
              Contains(HasSubstr("XYZ: perhaps of this ticker, as the record names none: nobody has "
                                 "asked for this ticker; the quote is left out")));
}

// One message holds up to 8192 bytes of records, and the next one is for nobody when a quote of this one
// hangs up.
TEST_F(Trail, EndsAtAConnectionThatAQuoteEnds) {
  act = [this] { feed.Stop(); };
  std::string records;
  while (records.size() < 9000) records += Record("IBM", static_cast<double>(records.size()));
  Deliver(records + Record("MSFT", 1) + Record("IBM", 1).substr(0, 5));
  EXPECT_THAT(log.lines, ElementsAre(AllOf(StartsWith("MSFT: "),
                                           HasSubstr("in which it is named waited to be handed over when the "
                                                     "connection ended, and are left out")),
                                     AllOf(StartsWith("XYZ: "), HasSubstr("whose ticker had not come"))));
}

TEST_F(Trail, EndsAtAConnectionThatTheFeedEnds) {
  Deliver(Record("MSFT", 1).substr(0, 15));
  Deliver(Record("IBM", 1).substr(0, 3));
  feed.Stop();
  EXPECT_THAT(log.lines, ElementsAre(StartsWith("MSFT: 18 bytes in which it is named waited")));
}

TEST_F(Trail, EndsAtAConnectionThatThePeerEndsInTheMidstOfARecord) {
  Deliver(Record("MSFT", 1).substr(0, 15));
  sockets.Newest().Drop();
  EXPECT_THAT(log.lines, ElementsAre(AllOf(StartsWith("MSFT: "), HasSubstr("in which it is named waited"))));
}

TEST_F(Trail, SaysNothingOfAConnectionThatEndsInOrder) {
  Deliver(Record("IBM", 1));
  feed.Stop();
  EXPECT_THAT(log.lines, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
