#include "wire/record_probe.h"

#include <gtest/gtest.h>

#include <string>

#include "support/level1_wire.h"

namespace mirelo::wire {
namespace {

using testing::Level1Wire;

// Bytes that were looked at are put to ruin between two looks: who looked at them again would see that. A
// peer that sends single bytes is not to have all of them looked at for each.

TEST(GrowingRecord, WalksOverEachFieldOnce) {
  const std::string whole = Level1Wire().Symbol("MSFT").Last(1).Volume(7);
  const std::string begun = Level1Wire().Symbol("MSFT").Last(1);
  GrowingRecord record;
  record.Probe(whole.substr(0, begun.size()));
  std::string ruined = whole;
  for (std::size_t i = 4; i < begun.size(); ++i) ruined[i] = '\x7F';
  EXPECT_TRUE(record.Probe(ruined).fits);
  EXPECT_FALSE(ProbeRecord(ruined).fits);
}

TEST(GrowingRecord, SearchesBytesForAHeadOnce) {
  const std::string begun = Level1Wire().Id(1).Length(30'000).Bytes() + std::string(200, 'x');
  GrowingRecord record;
  EXPECT_FALSE(record.HoldsOthersBack(begun));
  const std::string head = "LO<STATUSCODE>";
  std::string ruined = begun + "x";
  ruined.replace(20, head.size(), head);
  EXPECT_FALSE(record.HoldsOthersBack(ruined));
  EXPECT_TRUE(GrowingRecord().HoldsOthersBack(ruined));
  EXPECT_TRUE(record.HoldsOthersBack(ruined + head)) << "which is new";
}

}  // namespace
}  // namespace mirelo::wire
