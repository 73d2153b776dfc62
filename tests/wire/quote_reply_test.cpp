#include "wire/quote_reply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "support/processor_time.h"

namespace mirelo::wire {
namespace {

using Kind = QuoteFlaw::Kind;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kA = "A,d,t,1,2,3,4,U,10,6,7,8,9,10,11,12,13,14,15";
const std::string kB = "B,d,t,1,2,3,4,U,20,6,7,8,9,10,11,12,13,14,15";
const std::string kNothing = ",,,,,,,,0,,,,,,,,,,";

MendedReply MendAB(const std::string& body) { return Mend(body, {"A", "B"}); }

TEST(QuoteReply, InOrderStaysAsItIs) {
  for (const std::string status : {"OK", "ok", "Ok"}) {
    const auto mended = MendAB(status + "\r\n" + kA + "\r\n" + kB);
    EXPECT_EQ(mended.body, status + "\r\n" + kA + "\r\n" + kB);
    EXPECT_THAT(mended.flaws, IsEmpty());
  }
  EXPECT_EQ(Mend("OK\r\nb" + kB.substr(1), {"B"}).body, "OK\r\nb" + kB.substr(1))
      << "but for the case of letters";
}

TEST(QuoteReply, ThatIsNoSuccessStaysAsItIs) {
  for (const std::string& body : std::vector<std::string>{"", "ERROR", "OK ", "\r\nOK", "ERROR\r\n" + kA}) {
    EXPECT_EQ(MendAB(body).body, body);
    EXPECT_THAT(MendAB(body).flaws, IsEmpty());
  }
}

TEST(QuoteReply, HasARecordForEachTickerInTheirOrder) {
  const std::string good = "OK\r\n" + kA + "\r\n" + kB;
  EXPECT_EQ(MendAB("OK\r\n" + kB + "\r\n" + kA).body, good);
  EXPECT_EQ(MendAB("OK\r\n" + kA + "\r\n" + kA + "\r\n" + kB).body, good);
  EXPECT_EQ(MendAB("OK\r\nX\r\nY\r\n" + kB + "\r\n" + kA).body, good);
  EXPECT_EQ(MendAB(good + "\r\n\r\n").body, good);
  const auto mended = MendAB("OK\r\n" + kB);
  EXPECT_EQ(mended.body, "OK\r\n" + kNothing + "\r\n" + kB);
  EXPECT_THAT(mended.flaws, ElementsAre(QuoteFlaw{0, Kind::NoQuote, 0, ""}));
  EXPECT_EQ(MendAB("OK").body, "OK\r\n" + kNothing + "\r\n" + kNothing);
  EXPECT_EQ(Mend("OK\r\n" + kA + "\r\n" + kA, {"A", "A"}).body, "OK\r\n" + kA + "\r\n" + kA)
      << "asked for twice";
}

TEST(QuoteReply, TrustsPlacesOnlyWhereThereAreAsManyRecordsAsTickers) {
  const std::string other = "X" + kA.substr(1);
  EXPECT_EQ(MendAB("OK\r\n" + other + "\r\n" + kB).body, "OK\r\n" + other + "\r\n" + kB);
  EXPECT_EQ(MendAB("OK\r\n" + other).body, "OK\r\n" + kNothing + "\r\n" + kNothing);
}

TEST(QuoteReply, GivesNoTickerARecordThatNamesAnother) {
  const auto mended = MendAB("OK\r\n" + kB + "\r\n" + kB);
  EXPECT_EQ(mended.body, "OK\r\n" + kNothing + "\r\n" + kB);
  EXPECT_THAT(mended.flaws, ElementsAre(QuoteFlaw{0, Kind::NoQuote, 0, ""}));
}

TEST(QuoteReply, HasAllFieldsAndANumberAsVolume) {
  const auto mended = MendAB("OK\r\nA,d,t,2\r\nB,d,t,1,2,3,4,U,N/A,6,7,8,9,10,11,12,13,14,15,16");
  EXPECT_EQ(mended.body, "OK\r\nA,d,t,,,,,,0,,,,,,,,,,\r\nB,d,t,1,2,3,4,U,0,6,7,8,9,10,11,12,13,14,15");
  EXPECT_THAT(mended.flaws,
              ElementsAre(QuoteFlaw{0, Kind::MissingFields, 3, ""}, QuoteFlaw{1, Kind::BadVolume, 0, "N/A"}));
}

// The connection may have ended in the middle of a number.
TEST(QuoteReply, LosesTheLastFieldOfARecordThatBreaksOff) {
  const auto mended = MendAB("OK\r\nA,d,t,1,2,3,4,U,12");
  EXPECT_EQ(mended.body, "OK\r\nA,d,t,1,2,3,4,U,0,,,,,,,,,,\r\n" + kNothing);
  EXPECT_THAT(mended.flaws,
              ElementsAre(QuoteFlaw{0, Kind::MissingFields, 8, ""}, QuoteFlaw{1, Kind::NoQuote, 0, ""}));
}

// Of delimiters alone: neither time nor memory for each of them.
TEST(QuoteReply, MayBeLongForNothing) {
  std::string lines = "OK";
  while (lines.size() < 16U << 20) lines += "\r\n";
  const auto began = testing::ProcessorTime();
  EXPECT_EQ(MendAB(lines).body, "OK\r\n" + kNothing + "\r\n" + kNothing);
  EXPECT_EQ(MendAB("OK\r\nA" + std::string(16U << 20, ',')).body.size(), 2 + 2 + 20 + 2 + kNothing.size());
  EXPECT_LT(testing::ProcessorTime() - began, std::chrono::seconds(5));
}

// For whoever asks what became of them.
TEST(QuoteReply, TellsOfRecordsThatNoTickerWasGiven) {
  const auto left_out = [](const std::string& body) {
    std::vector<std::string> records;
    Mend(body, {"A", "B"}, [&](std::string_view record) { records.emplace_back(record); });
    return records;
  };
  EXPECT_THAT(left_out("OK\r\n" + kA + "\r\n" + kB), IsEmpty());
  EXPECT_THAT(left_out("OK\r\n" + kA), IsEmpty());
  EXPECT_THAT(left_out("OK\r\n" + kA + "\r\nX\r\n" + kA + "\r\n\r\n" + kB + "\r\n"), ElementsAre("X", kA));
  EXPECT_THAT(left_out("OK\r\n1\r\n2\r\n3\r\n4\r\n5\r\n" + kA + "\r\n" + kB),
              ElementsAre("1", "2", "3", "4", "5", "\r\n" + kA + "\r\n" + kB))
      << "some are not looked at";
}

}  // namespace
}  // namespace mirelo::wire
