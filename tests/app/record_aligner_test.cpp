#include "app/record_aligner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace mirelo::app {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Chunks = std::vector<std::string>;

// A record of that many bytes in all.
std::string Record(const std::string& kind, std::size_t length) {
  std::string record = kind;
  record += static_cast<char>(length & 0xFF);
  record += static_cast<char>(length >> 8);
  return record.append(length - record.size(), 'x');
}

Chunks Feed(RecordAligner& aligner, const std::string& bytes) {
  aligner.Add({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  Chunks chunks;
  while (const auto chunk = aligner.Next()) chunks.emplace_back(chunk->begin(), chunk->end());
  return chunks;
}

TEST(RecordAligner, GivesRecordsThatAreWhole) {
  const std::string records = Record("S1", 20) + Record("L1", 30) + Record("S1", 40);
  RecordAligner aligner;
  EXPECT_THAT(Feed(aligner, records), ElementsAre(records));
}

TEST(RecordAligner, BeginsAChunkWithEachKindThatIsOnlyReadThere) {
  const std::string quotes = Record("S1", 20) + Record("L1", 30);
  const std::string others = Record("HO", 40) + Record("HO", 44) + Record("S1", 20);
  const std::string rest = Record("HT", 50);
  RecordAligner aligner;
  EXPECT_THAT(Feed(aligner, quotes + others + rest), ElementsAre(quotes, others, rest));
}

TEST(RecordAligner, HoldsTheBeginningOfARecordWhereverItIsCut) {
  const std::string first = Record("S1", 20);
  const std::string second = Record("L1", 30);
  for (std::size_t cut = 1; cut < second.size(); ++cut) {
    SCOPED_TRACE(cut);
    RecordAligner aligner;
    EXPECT_THAT(Feed(aligner, first + second.substr(0, cut)), ElementsAre(first));
    EXPECT_THAT(Feed(aligner, second.substr(cut)), ElementsAre(second));
  }
}

TEST(RecordAligner, PassesWhatIsNoRecordAsItCame) {
  for (const char* text :
       {"OK<CONNECT></CONNECT>\r\n", "LO<STATUSCODE>0</STATUSCODE>", "ES", "x", "Sx", "L2"}) {
    RecordAligner aligner;
    EXPECT_THAT(Feed(aligner, text), ElementsAre(text));
  }
}

TEST(RecordAligner, PassesAListOfSourcesEvenWhereItReadsLikeARecord) {
  RecordAligner aligner;
  EXPECT_THAT(Feed(aligner, "ES<SOURCES><SOURCETYPE>"), ElementsAre("ES<SOURCES><SOURCETYPE>"));
  EXPECT_THAT(Feed(aligner, "L1</SOURCETYPE>"), ElementsAre("L1</SOURCETYPE>"));
  EXPECT_THAT(Feed(aligner, "S"), ElementsAre("S"));
  EXPECT_THAT(Feed(aligner, "HT</sources>"), ElementsAre("HT</sources>"));
  EXPECT_THAT(Feed(aligner, Record("L1", 30).substr(0, 10)), IsEmpty());
}

TEST(RecordAligner, PartsRecordsFromTheTextBehindThem) {
  RecordAligner aligner;
  EXPECT_THAT(Feed(aligner, Record("S1", 20) + "OK<STREAMER>"),
              ElementsAre(Record("S1", 20), "OK<STREAMER>"));
}

TEST(RecordAligner, PassesARecordWhoseLengthCannotBe) {
  for (const std::string& length :
       {std::string("\0\0", 2), std::string("\4\0", 2), std::string("\xFF\xFF", 2)}) {
    RecordAligner aligner;
    const std::string bytes = "S1" + length + "rest";
    EXPECT_THAT(Feed(aligner, bytes), ElementsAre(bytes));
  }
}

TEST(RecordAligner, GivesNoChunkAboveTheLimitButForALongRecord) {
  const std::string records = Record("S1", 4000) + Record("S1", 4192) + Record("S1", 5);
  RecordAligner aligner;
  EXPECT_THAT(Feed(aligner, records), ElementsAre(records.substr(0, 8192), Record("S1", 5)));
  EXPECT_THAT(Feed(aligner, Record("S1", 20000)), ElementsAre(Record("S1", 20000)));
  EXPECT_THAT(Feed(aligner, ""), IsEmpty());
}

TEST(RecordAligner, LosesNothingOfAStreamHoweverItIsCut) {
  std::mt19937 chance(20101);
  std::string stream;
  for (int i = 0; i < 2000; ++i) stream += Record(i % 3 == 0 ? "L1" : "S1", 5 + chance() % 200);
  RecordAligner aligner;
  std::string joined;
  for (std::size_t at = 0; at < stream.size();) {
    const std::size_t size = 1 + chance() % 8192;
    for (const std::string& chunk : Feed(aligner, stream.substr(at, size))) {
      EXPECT_TRUE(chunk.starts_with("S1") || chunk.starts_with("L1"));
      joined += chunk;
    }
    at += size;
  }
  EXPECT_EQ(joined, stream);
}

}  // namespace
}  // namespace mirelo::app
