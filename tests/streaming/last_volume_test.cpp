#include <string>
#include <string_view>
#include <vector>

#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;

class LastVolume : public StreamTest {
 protected:
  LastVolume() { stream->connect(); }
  void Trade(std::int64_t volume, std::string_view stamp = kNine) {
    // The price moves each time, so that every record is published.
    Deliver(Level1Wire().Symbol("X").Last(price_++).Volume(volume).Stamp(stamp));
  }
  std::vector<int> Volumes() {
    std::vector<int> volumes;
    for (const auto& quote : Take()) volumes.push_back(quote->Last_Volume());
    return volumes;
  }
  static constexpr std::string_view kNine = "01202011090000";
  static constexpr std::string_view kNineAndASecond = "01202011090001";
  static constexpr std::string_view kNextDay = "01212011090000";

 private:
  double price_ = 1;
};

TEST_F(LastVolume, IsTheDifferenceToTheQuoteBefore) {
  for (const int volume : {1000, 1500, 1500, 1700}) Trade(volume);
  EXPECT_THAT(Volumes(), ElementsAre(0, 500, 0, 200));
}

TEST_F(LastVolume, IsZeroForTheFirstQuoteOfATicker) {
  Trade(1000);
  Deliver(Level1Wire().Symbol("Y").Last(1).Volume(5000).Stamp(kNine));
  EXPECT_THAT(Volumes(), ElementsAre(0, 0));
}

TEST_F(LastVolume, StartsAnewWithAnotherStampWhenTheFormatShowsTheTime) {
  stream->DovantaFormatUserDate("mm/dd/yyyy hh:mm:ss");
  Trade(1000);
  Trade(1500, kNineAndASecond);
  Trade(1600, kNineAndASecond);
  Trade(1700, kNine);
  EXPECT_THAT(Volumes(), ElementsAre(0, 0, 100, 0));
}

TEST_F(LastVolume, RunsThroughTheDayWhenTheFormatShowsTheDateAlone) {
  stream->DovantaFormatUserDate("mm/dd/yyyy");
  Trade(1000);
  Trade(1500, kNineAndASecond);
  Trade(100, kNextDay);
  Trade(150, kNextDay);
  EXPECT_THAT(Volumes(), ElementsAre(0, 500, 0, 50));
}

TEST_F(LastVolume, GoesBelowZeroWhenTheVolumeFalls) {
  Trade(1500);
  Trade(1000);
  EXPECT_THAT(Volumes(), ElementsAre(0, -500));
}

TEST_F(LastVolume, IsZeroWithoutVolumeAndLeavesTheStateAlone) {
  Trade(1000);
  Deliver(Level1Wire().Symbol("X").Last(100).Stamp(kNextDay));
  Trade(-5);
  Trade(1300);
  EXPECT_THAT(Volumes(), ElementsAre(0, 0, 0, 300));
}

TEST_F(LastVolume, ComparesStampsAsTextsAndAnAbsentOneIsAText) {
  Deliver(Level1Wire().Symbol("X").Last(1).Volume(1000));
  Deliver(Level1Wire().Symbol("X").Last(2).Volume(1100));
  Trade(1300);
  EXPECT_THAT(Volumes(), ElementsAre(0, 100, 0));
}

TEST_F(LastVolume, ComparesStampsWithoutRegardToCase) {
  Trade(1000, "ABCDEFGHIJKLMN");
  Trade(1100, "abcdefghijklmn");
  EXPECT_THAT(Volumes(), ElementsAre(0, 100));
}

}  // namespace
}  // namespace mirelo::testing
