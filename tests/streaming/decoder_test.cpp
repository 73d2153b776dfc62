#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/runtime_error.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Decoder : public StreamTest {
 protected:
  Decoder() { stream->connect(); }
};

TEST_F(Decoder, GivesTwoQuotesForTwoRecordsOfAChunk) {
  Deliver(Quote("A") + Quote("B"));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B"));
}

TEST_F(Decoder, DecodesAChunkOfSixBytesThatIsARecordOfOneId) {
  // The value lies behind the end and reads as 0; the walk ends four bytes behind the chunk.
  Deliver(Level1Wire().Id(9));
  EXPECT_EQ(events, 0);
  // The id was decoded: a zero-terminated text has no zero here.
  EXPECT_EQ(ErrorNumberOf(Level1Wire().Id(1).Bytes()), 9);
}

TEST_F(Decoder, ForgetsChunksOfUpToFiveBytes) {
  const std::string record = Quote("A");
  for (std::size_t size = 3; size <= 5; ++size) {
    SCOPED_TRACE(size);
    Deliver(record.substr(0, size));
    Deliver(record.substr(size));  // no tail is pending
    EXPECT_EQ(events, 0);
  }
  Deliver(record.substr(0, 6));
  Deliver(record.substr(6));
  EXPECT_EQ(events, 1);
}

TEST_F(Decoder, PublishesWholeRecordsAtOnceAndKeepsTheTail) {
  const std::string last = Quote("C");
  Deliver(Quote("A") + Quote("B") + last.substr(0, 9));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B"));
  Deliver(last.substr(9));
  EXPECT_THAT(TakeSymbols(), ElementsAre("C"));
}

TEST_F(Decoder, WantsTheKindOfTheChunkAndS1AndL1) {
  struct Case {
    const char* chunk_kind;
    const char* record_kind;
    bool wanted;
  };
  for (const auto& [chunk_kind, record_kind, wanted] : {
           Case{"S1", "S1", true},
           {"S1", "L1", true},
           {"S1", "HO", false},
           {"S1", "HT", false},
           {"L1", "S1", true},
           {"L1", "L1", true},
           {"L1", "HO", false},
           {"L1", "HT", false},
           {"HO", "S1", true},
           {"HO", "L1", true},
           {"HO", "HO", true},
           {"HO", "HT", false},
           {"HT", "S1", true},
           {"HT", "L1", true},
           {"HT", "HO", false},
           {"HT", "HT", true},
           {"HO", "XX", false},
       }) {
    SCOPED_TRACE(std::string(chunk_kind) + " with " + record_kind);
    Renew();
    stream->connect();
    Deliver(Quote("A", chunk_kind) + Quote("B", record_kind));
    EXPECT_EQ(TakeSymbols().size(), wanted ? 2u : 1u);
  }
}

TEST_F(Decoder, EndsAWantedRecordBehindAnUnwantedOneByTheUnwantedOnesStart) {
  // The wanted record's end lies 24 bytes before its true one, so its last two fields stay unread. The scan
  // goes on at the third field, whose bytes read as an unwanted kind and a length that leads away.
  const std::string unwanted = Level1Wire("XX").Bid(1).Ask(2);
  const std::string wanted = Level1Wire()
                                 .Symbol("B")
                                 .Bid(3)
                                 .Ask(4)
                                 .Id(4)
                                 .Raw(
                                     "\xFF\x7F"
                                     "123456")
                                 .Change(6);
  Deliver(Quote("A") + unwanted + wanted);
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 2u);
  EXPECT_EQ(quotes[1]->Symbol(), "B");
  EXPECT_EQ(quotes[1]->Bid_Price(), 3);
  EXPECT_EQ(quotes[1]->Ask_Price(), 4) << "begun before the end";
  EXPECT_EQ(quotes[1]->Last_Price(), 0);
  EXPECT_EQ(quotes[1]->Change(), 0);
}

TEST_F(Decoder, GoesOnScanningInsideARecordThatEndedEarly) {
  // The outer record ends behind its symbol, since its end is counted from an unwanted record as long as the
  // hidden one.
  const std::string hidden = Quote("HIDDEN");
  const std::string unwanted = Level1Wire("XX").Raw(std::string(hidden.size() - 4, 'x'));
  const std::string outer = Level1Wire().Symbol("OUTER").Raw(hidden);
  Deliver(Quote("A") + unwanted + outer);
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "HIDDEN"));
}

TEST_F(Decoder, CountsTheEndAnewBehindAWantedRecord) {
  const std::string unwanted = Level1Wire("XX");
  const std::string long_record = Level1Wire().Symbol("C").Last(1).Bid(2).Ask(3);
  Deliver(Quote("A") + unwanted + Quote("B") + long_record);
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 3u);
  EXPECT_EQ(quotes[1]->Last_Price(), 1) << "its end lies four bytes early, inside its last field";
  EXPECT_EQ(quotes[2]->Ask_Price(), 3) << "read to its end";
}

TEST_F(Decoder, ReadsAtLeastOneFieldOfARecordThatClaimsNone) {
  for (const std::int16_t length : std::initializer_list<std::int16_t>{4, 3, 0, -1, -32768}) {
    SCOPED_TRACE(length);
    Renew();
    stream->connect();
    const std::string liar = Level1Wire().Last(28.35).Length(length);
    Deliver(Quote("A") + liar + Quote("B"));
    EXPECT_THAT(TakeSymbols(), ElementsAre("A", "", "B"))
        << "the field is read, and the walk goes on behind it";
  }
}

TEST_F(Decoder, LooksForTheNextRecordBehindAFieldThatOverruns) {
  // The last field overruns its record by four bytes, which hold the head of another.
  const std::string overrun = Level1Wire().Symbol("A").Id(4).Raw("1234").Length(4 + 4 + 2 + 4);
  Deliver(overrun + "1234" + Quote("B"));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B"));
}

TEST_F(Decoder, DropsWhatLiesBehindALengthBeyondTheChunkOfAnUnwantedRecord) {
  Deliver(Quote("A") + std::string(Level1Wire("XX").Length(1000)) + Quote("B"));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A"));
}

TEST_F(Decoder, ReadsNumbersBehindTheEndAsZero) {
  Deliver(Level1Wire().Symbol("A").Last(1).Id(2).Raw("1234567"));
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 1u);
  EXPECT_EQ(quotes[0]->Bid_Price(), 0);
}

TEST_F(Decoder, ReadsAStampBehindTheEndAsNone) {
  Deliver(Level1Wire().Symbol("A").Last(1).Id(15).Raw("0120201108361"));
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 1u);
  EXPECT_EQ(quotes[0]->Date_Time(), "");
  EXPECT_EQ(quotes[0]->DateQT(), "");
  EXPECT_EQ(quotes[0]->TimeQT(), "");
}

TEST_F(Decoder, RaisesAnErrorForATextThatRunsOffTheEnd) {
  EXPECT_EQ(ErrorNumberOf(Quote("A") + std::string(Level1Wire().Last(2).Id(1).Raw("ENDLESS"))), 9);
  EXPECT_THAT(TakeSymbols(), ElementsAre("A")) << "what came before is published, the record itself is lost";
  EXPECT_EQ(ErrorNumberOf(Level1Wire().Last(2).Id(18).Bytes()), 9) << "a text that begins at the end";
}

TEST_F(Decoder, RaisesAnErrorForAWalkThatLeavesTheFront) {
  EXPECT_EQ(ErrorNumberOf(Quote("A") + std::string(Level1Wire("XX").Length(-100))), 9);
}

TEST_F(Decoder, ForgetsARecordHeadThatIsCutToOneByte) {
  const std::string next = Quote("B");
  Deliver(Quote("A") + next.substr(0, 1));
  Deliver(next.substr(1));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A"));
}

TEST_F(Decoder, ForgetsARecordHeadThatIsCutBeforeItsLength) {
  for (const std::size_t cut : {2u, 3u}) {
    SCOPED_TRACE(cut);
    Renew();
    stream->connect();
    const std::string next = Quote("B");
    Deliver(Quote("A") + next.substr(0, cut));
    Deliver(next.substr(cut));
    EXPECT_THAT(TakeSymbols(), ElementsAre("A")) << "its length reads as 0, so it seems complete";
  }
}

TEST_F(Decoder, KeepsARecordWithoutSymbolUnderTheEmptyOne) {
  Deliver(Level1Wire().Last(1));
  Deliver(Level1Wire().Last(1));
  Deliver(Level1Wire().Symbol("").Last(1));
  EXPECT_THAT(TakeSymbols(), ElementsAre(""));
}

TEST_F(Decoder, PublishesExactlyWhatTheRecordCarried) {
  Deliver(Level1Wire().Symbol("A").Last(1).Bid(2));
  Deliver(Level1Wire().Symbol("A").Last(3));
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 2u);
  EXPECT_EQ(quotes[1]->Bid_Price(), 0) << "not the value last seen";
}

TEST_F(Decoder, PublishesRecordsBeforeOneThatFails) {
  EXPECT_EQ(ErrorNumberOf(Quote("A") + Quote("B") + std::string(Level1Wire().Id(1).Raw("X"))), 9);
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B"));
  EXPECT_THAT(TakeSymbols(), IsEmpty());
}

// For whoever asks what became of them.
TEST_F(Decoder, TellsWhichRecordsAreLostWithAnError) {
  std::vector<std::string> lost;
  stream->Lost.Subscribe([&](std::span<const std::uint8_t> records) {
    lost.emplace_back(records.begin(), records.end());
    EXPECT_EQ(CurrentError().Number(), Errors::SubscriptOutOfRange().Number());
  });
  const std::string endless = Level1Wire().Symbol("B").Id(1).Raw("NO END").Bytes();
  EXPECT_EQ(ErrorNumberOf(Quote("A") + endless), 9);
  EXPECT_THAT(lost, ElementsAre(endless));
  EXPECT_EQ(ErrorNumberOf(Quote("A") + Level1Wire("XX").Length(-1000).Bytes() + endless), 9);
  EXPECT_THAT(lost.back(), ::testing::SizeIs(Quote("A").size() + 4 + endless.size()))
      << "a place before the chunk is its beginning";
  Deliver(Quote("C"));
  EXPECT_EQ(lost.size(), 2U);
}

TEST_F(Decoder, TellsOfLostRecordsWhereverItLosesItsPlace) {
  std::size_t lost = 0;
  stream->Lost.Subscribe([&](std::span<const std::uint8_t> records) { lost = records.size(); });
  std::string chunk;
  std::size_t farthest = 0;  // the first place behind 32767
  while (chunk.size() < 40'000) {
    if (farthest == 0 && chunk.size() > 32'767) farthest = chunk.size();
    chunk += Quote("A");
  }
  EXPECT_EQ(ErrorNumberOf(chunk), 6);
  EXPECT_EQ(lost, chunk.size() - farthest);
  stream->StopEndlessWalks(true);
  const std::string endless = Level1Wire("XX").Length(0).Bytes();
  EXPECT_EQ(ErrorNumberOf(Quote("A") + endless + endless), cQTStreaming::kEndlessWalk);
  EXPECT_EQ(lost, 2 * endless.size());
}

}  // namespace
}  // namespace mirelo::testing
