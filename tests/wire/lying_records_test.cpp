// Records whose length reaches into those behind them, or whose end does not come.

#include "wire/message_aligner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/level1_wire.h"
#include "support/processor_time.h"
#include "wire/aligned_chunks.h"
#include "wire/record_probe.h"
#include "wire/whole_messages.h"

namespace mirelo::wire {
namespace {

using namespace mirelo::testing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(LyingRecords, LeavesOutARecordWhoseLengthReachesIntoTheNextOneAndTells) {
  const std::string next = Level1Wire().Symbol("IBM").Last(2).Volume(200);
  for (const std::size_t more : {1U, 3U, 5U, 6U, 20U, static_cast<unsigned>(next.size())}) {
    SCOPED_TRACE(more);
    const std::string lying = WithLength(Level1Wire().Symbol("MSFT").Last(1), more);
    for (const std::string& before : {std::string(), next}) {
      WholeMessages all(false);
      all.Add(before + lying + next + next);
      EXPECT_EQ(all.Messages(), Chunks(before.empty() ? 2 : 3, next));
      EXPECT_THAT(all.Aligner().TakeNews(), ElementsAre(HasSubstr("length cannot be")));
    }
  }
}

// A record that was cut off at its sender's, so that its last field takes the next one's head for its value.
TEST(LyingRecords, FindsTheNextRecordInAFieldThatHasTakenItsHead) {
  const std::string next = Level1Wire().Symbol("IBM").Last(2).Volume(200);
  const Level1Wire whole = Level1Wire().Symbol("MSFT").Volume(7).Last(1);
  const auto length = static_cast<std::int16_t>(whole.Bytes().size());
  const Level1Wire cut_texts[] = {Level1Wire().Id(1).Raw("MS"), Level1Wire().Symbol("MSFT").Id(18).Raw("Mic"),
                                  Level1Wire().Symbol("MSFT").Id(4).Raw("\1\2\3"),
                                  Level1Wire().Symbol("MSFT").Id(15).Raw("0120")};
  for (Level1Wire cut : cut_texts) {
    cut.Length(length);
    WholeMessages all(false);
    all.Add(cut.Bytes() + next + next + next);
    EXPECT_THAT(all.Messages(), ElementsAre(next, next, next)) << ::testing::PrintToString(cut.Bytes());
    EXPECT_THAT(all.Aligner().TakeNews(), ElementsAre(HasSubstr("length cannot be")));
  }
}

TEST(LyingRecords, TakesAFieldThatOnlyLooksLikeARecordForAField) {
  for (const std::string symbol : {"HOT", "SHOP", "S1x", "L1 "}) {
    const std::string fit = Level1Wire().Symbol(symbol).Last(4).Volume(7);
    const std::string unfit = Level1Wire().Symbol(symbol).Last(4).Id(4).Raw("12");
    WholeMessages all(false);
    all.Add(fit + unfit + Record("S1", 120) + fit);
    EXPECT_THAT(all.Messages(), ElementsAre(fit, unfit, Record("S1", 120), fit));
    EXPECT_THAT(all.Aligner().TakeNews(), IsEmpty());
  }
}

// A head that strays into the stream holds good quotes back neither until they fill its length nor at all
// once that is known to lie.
TEST(LyingRecords, LosesNoQuoteToAStrayHead) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2).Volume(200);
  for (const int length : {200, 8'000, 32'767}) {
    SCOPED_TRACE(length);
    MessageAligner aligner;
    const std::string stray = Level1Wire().Id(1).Length(static_cast<std::int16_t>(length));
    EXPECT_THAT(Feed(aligner, stray), IsEmpty());
    EXPECT_EQ(aligner.Patience(), MessageAligner::kRecordPatience);
    EXPECT_THAT(Feed(aligner, quote), IsEmpty()) << "its fields may be the head's";
    EXPECT_EQ(aligner.Patience(), MessageAligner::kPatience);
    EXPECT_THAT(Feed(aligner, quote), ElementsAre(quote + quote));
    EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("length cannot be")));
  }
}

TEST(LyingRecords, GivesWhatCameBehindAStrayHeadWhenItIsLetGo) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  for (const int field : {1, 4, 6, 11, 15, 18}) {
    SCOPED_TRACE(field);
    const std::string stray = Level1Wire().Id(field).Length(30'000);
    for (const std::string& behind : {quote, std::string(kLoggedIn)}) {
      MessageAligner aligner;
      EXPECT_THAT(Feed(aligner, stray + behind), IsEmpty());
      EXPECT_EQ(aligner.Patience(), MessageAligner::kPatience);
      EXPECT_TRUE(aligner.WaitsForRecord());
      EXPECT_THAT(LetGo(aligner), ElementsAre(behind));
      EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("do not end")));
      EXPECT_EQ(aligner.Patience(), std::nullopt);
    }
  }
}

TEST(LyingRecords, LetsGoOfTheRecordAtTheFrontAlone) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  MessageAligner aligner;
  Feed(aligner, Level1Wire().Id(1).Length(30'000).Bytes() + kLoggedIn + quote.substr(0, 10));
  EXPECT_THAT(LetGo(aligner), ElementsAre(kLoggedIn));
  EXPECT_EQ(aligner.Patience(), MessageAligner::kRecordPatience);
  EXPECT_THAT(Feed(aligner, quote.substr(10)), ElementsAre(quote));
}

TEST(LyingRecords, LeavesOutARecordWhoseRestDoesNotComeAndTells) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  MessageAligner aligner;
  Feed(aligner, quote.substr(0, 12));
  EXPECT_THAT(LetGo(aligner), IsEmpty());
  EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("do not end")));
  EXPECT_THAT(Feed(aligner, quote.substr(12) + quote), ElementsAre(quote));
}

TEST(LyingRecords, GivesAllThatWaitsBehindStrayHeadsAtTheEnd) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  const std::string stray = Level1Wire().Id(4).Length(30'000);
  const std::string refused = "LO<STATUSCODE>1</STATUSCODE>";
  WholeMessages all(false);
  all.Add(stray + quote + stray + refused).LetGo();
  EXPECT_THAT(all.Messages(), ElementsAre(quote, refused));
}

TEST(LyingRecords, SaysWhetherTheSameRecordStillWaits) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  MessageAligner aligner;
  Feed(aligner, quote + quote.substr(0, 8));
  const auto front = aligner.Front();
  EXPECT_EQ(front, quote.size());
  Feed(aligner, quote.substr(8, 3));
  EXPECT_EQ(aligner.Front(), front);
  Feed(aligner, quote.substr(11) + quote.substr(0, 11));
  EXPECT_EQ(aligner.Front(), 2 * quote.size());
}

// Those of records as well, whose lengths may lie: inside of this one others begin everywhere, and none of
// them ends where its fields do.
TEST(LyingRecords, LooksAtEachByteOfALongRecordOnce) {
  const std::string inner = Level1Wire().Id(6).Length(32'767);  // which is the value of a field, too
  std::string fields;
  while (fields.size() < 32'000) fields += inner;
  for (const int length : {32'767, 16'001}) {
    SCOPED_TRACE(length);
    const std::string message = Level1Wire().Id(6).Raw(fields).Length(static_cast<std::int16_t>(length));
    MessageAligner aligner;
    const auto began = testing::ProcessorTime();
    for (const char& byte : message) {
      EXPECT_THAT(Feed(aligner, {&byte, 1}), IsEmpty());
      (void)aligner.Patience();
    }
    EXPECT_LT(testing::ProcessorTime() - began, std::chrono::seconds(5));
    EXPECT_EQ(aligner.Waiting(), message.size());
  }
}

// Of those inside each would be walked over to its end, thousands of times over the same bytes. So when they
// claim many times the bytes that there are, one behind them that is good is not looked at any more.
TEST(LyingRecords, AreNotAllLookedAtWhereAPeerNestsThem) {
  constexpr std::size_t kEnd = 32'700;
  const std::string good = Record("S1", 2'000);
  const auto with_nested = [&](std::size_t bytes) {
    std::string record = Level1Wire().Long(6, 0).Bytes();
    while (record.size() < bytes)
      record += Level1Wire().Id(11).Length(static_cast<std::int16_t>(kEnd - record.size()));
    return record + good + std::string(kEnd - record.size() - good.size(), '\x7F');
  };
  const std::string few = with_nested(80);
  EXPECT_EQ(FindInnerRecord(few, few.size()).begin, few.find(good));
  const std::string many = with_nested(30'000);
  EXPECT_EQ(FindInnerRecord(many, many.size()).begin, 0U);
}

}  // namespace
}  // namespace mirelo::wire
