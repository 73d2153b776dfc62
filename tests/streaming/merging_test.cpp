#include <cstddef>
#include <string>

#include "streaming/reference_stream.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Merging : public StreamTest {
 protected:
  Merging() { stream->connect(); }
};

class Continuation : public Merging {};

TEST_F(Continuation, IsLaidBehindThePendingTail) {
  const std::string record = Quote("A");
  for (std::size_t cut = 6; cut + 3 <= record.size(); ++cut) {
    SCOPED_TRACE(cut);
    Renew();
    stream->connect();
    Deliver(record.substr(0, cut));
    Deliver(record.substr(cut));
    EXPECT_THAT(TakeSymbols(), ElementsAre("A"));
  }
}

TEST_F(Continuation, MayTakeManyChunks) {
  const std::string record = Level1Wire().Symbol("A").Last(1).Text(18, std::string(200, 'c'));
  for (std::size_t at = 0; at < record.size(); at += 7) Deliver(record.substr(at, 7));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A"));
}

TEST_F(Continuation, MayBeginFurtherRecordsAndEndInATail) {
  const std::string a = Quote("A");
  const std::string c = Quote("C");
  Deliver(a.substr(0, 8));
  Deliver(a.substr(8) + Quote("B") + c.substr(0, 8));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B"));
  Deliver(c.substr(8));
  EXPECT_THAT(TakeSymbols(), ElementsAre("C"));
}

TEST_F(Continuation, IsDroppedWhenNothingIsPending) {
  Deliver(Quote("A").substr(6));
  EXPECT_THAT(TakeSymbols(), IsEmpty());
}

TEST_F(Continuation, EmptiesTheTailWhenAllWasUsedUp) {
  const std::string record = Quote("A");
  Deliver(record.substr(0, 8));
  Deliver(record.substr(8));
  Deliver(
      Level1Wire().Symbol("B").Last(2).Bytes().substr(8));  // behind A's tail it would be a new price of A
  EXPECT_THAT(TakeSymbols(), ElementsAre("A"));
}

TEST_F(Continuation, LeavesTheTailWhereTheWalkWentPastTheEnd) {
  const std::string record = Quote("A");
  Deliver(record.substr(0, 8));
  // Behind the record stands an unwanted one that reaches beyond the chunk, so the walk doesn't end at the
  // end.
  Deliver(record.substr(8) + std::string(Level1Wire("XX").Length(500)));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A"));
  Deliver(Level1Wire().Symbol("B").Last(2).Bytes().substr(8));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A")) << "the old tail was still there";
}

TEST_F(Continuation, LeavesTheTailWhenTheRecordFails) {
  Deliver(Quote("A").substr(0, 7));
  EXPECT_EQ(ErrorNumberOf("xxxxxxxxxxx"), 9) << "the symbol has no end";
  Deliver(Quote("A").substr(7));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A"));
}

TEST_F(Merging, DoesNotHappenForChunksOfTheOtherKindsWhichLeaveTheTailAlone) {
  for (const char* kind : {"S1", "HO", "HT"}) {
    SCOPED_TRACE(kind);
    Renew();
    stream->connect();
    const std::string torn = Quote("TORN");
    Deliver(torn.substr(0, 9));
    Deliver(Quote("WHOLE", kind) + std::string("S"));  // ends one byte into a record, so it isn't used up
    EXPECT_THAT(TakeSymbols(), ElementsAre("WHOLE"));
    Deliver(torn.substr(9));
    EXPECT_THAT(TakeSymbols(), ElementsAre("TORN"));
  }
}

TEST_F(Merging, IsNotDisturbedByChunksTooShortForARecord) {
  const std::string torn = Quote("TORN");
  Deliver(torn.substr(0, 9));
  for (const char* chunk : {"S1x", "S1xy", "S1xyz"}) Deliver(chunk);
  Deliver(torn.substr(9));
  EXPECT_THAT(TakeSymbols(), ElementsAre("TORN"));
}

TEST_F(Merging, IsForgottenBehindAChunkOfTheOtherKindsThatWasUsedUp) {
  const std::string torn = Quote("TORN");
  Deliver(torn.substr(0, 9));
  Deliver(Quote("WHOLE"));
  Deliver(torn.substr(9));
  EXPECT_THAT(TakeSymbols(), ElementsAre("WHOLE"));
}

// Chunks that begin with L1 behind a pending tail: all their bytes fall on one place.
class BehindATail : public Merging {};

TEST_F(BehindATail, KeepsOnlyTheLastByteOfTheChunkAndZeros) {
  // The tail lacks two bytes of the bid; the chunk of three supplies its last byte and one zero.
  const std::string record = Level1Wire().Symbol("A").Last(1).Bid(2);
  Deliver(record.substr(0, record.size() - 2));
  Deliver("L1\x40");
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 1u);
  EXPECT_EQ(Flat(*quotes[0]).at("Bid_Price"), "1.7800590868057611e-307") << "bytes 00 00 00 00 00 00 40 00";
}

TEST_F(BehindATail, EmptiesTheTailEvenWhenTheRecordIsStillIncomplete) {
  const std::string record = Quote("A");
  // The chunk supplies the two zeros that follow the tail: behind either tail, the old one or the longer one,
  // the rest of the record would publish it.
  for (const std::size_t rest : {9U, 11U}) {
    SCOPED_TRACE(rest);
    Renew();
    stream->StopEndlessWalks(true);  // a tail that is still there may be the start of one
    stream->connect();
    Deliver(record.substr(0, 9));
    Deliver(std::string("L1\0", 3));
    Deliver(record.substr(rest));
    EXPECT_THAT(TakeSymbols(), IsEmpty());
  }
}

TEST_F(BehindATail, LeavesTheTailWhenTheRecordFails) {
  // The chunk supplies a last field of nothing but its id, that of a text: error 9.
  const std::string record = Level1Wire().Symbol("A").Last(1).Id(1);
  const std::string tail = record.substr(0, record.size() - 2);
  Deliver(tail);
  EXPECT_EQ(ErrorNumberOf("L1\x01"), 9);
  EXPECT_THAT(TakeSymbols(), IsEmpty());
  Deliver(std::string("\x09\0\x05", 3));  // a size that is cut off reads as 0
  EXPECT_THAT(TakeSymbols(), ElementsAre("A")) << "the tail was still there";
}

TEST_F(BehindATail, LosesTheQuotesOfTheChunk) {
  const std::string torn = Level1Wire().Symbol("TORN").Last(1).Text(18, std::string(100, 'c'));
  Deliver(torn.substr(0, 20));
  Deliver(Quote("LOST", "L1"));
  EXPECT_THAT(TakeSymbols(), IsEmpty());
  Deliver(Quote("NEXT", "L1"));
  EXPECT_THAT(TakeSymbols(), ElementsAre("NEXT"));
}

TEST_F(BehindATail, DecodesTheChunkAsItStandsWhenNothingIsPending) {
  Deliver(Quote("A", "L1") + Quote("B", "L1"));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B"));
}

}  // namespace
}  // namespace mirelo::testing
