#include <gmock/gmock.h>

#include "snapshot/last_quote_test.h"

namespace mirelo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

// The volume since the call before, for the one ticker "A".
class LastVolume : public LastQuoteTest {
 protected:
  LastVolume() { Show("LastVolume"); }

  std::string Call(const char* volume, const char* date = "1/20/2011") {
    market.quotes["A"] = {volume, date};
    const Variant result = facade->GetLastQuote(TickersOf({"A"}));
    return result.IsArray() ? RowOf(result, 1)[0] : "no result";
  }
};

TEST_F(LastVolume, IsZeroWhileNobodyTracks) {
  EXPECT_EQ(Call("1200"), "0");
  EXPECT_EQ(Call("1500"), "0");
  EXPECT_TRUE(facade->masPrevVolume().IsEmpty());
}

TEST_F(LastVolume, IsZeroOnTheFirstCallAndKeepsVolumeAndDate) {
  TrackVolumes(1);
  EXPECT_EQ(Call("1200"), "0");
  EXPECT_EQ(Tracked(1, 1), "1200");
  EXPECT_EQ(Tracked(1, 2), "1/20/2011");
}

TEST_F(LastVolume, IsTheGrowthSinceTheCallBefore) {
  TrackVolumes(1);
  Call("1200");
  EXPECT_EQ(Call("1500"), "300");
  EXPECT_EQ(Tracked(1, 1), "1500");
  EXPECT_EQ(Call("1500"), "0");
  EXPECT_EQ(Call("1501"), "1");
}

TEST_F(LastVolume, IsNegativeWhenTheVolumeDrops) {
  TrackVolumes(1);
  Call("1500");
  EXPECT_EQ(Call("1200"), "-300");
  EXPECT_EQ(Tracked(1, 1), "1200");
}

TEST_F(LastVolume, IsZeroOnTheFirstCallOfADay) {
  TrackVolumes(1);
  Call("1500");
  EXPECT_EQ(Call("90", "1/21/2011"), "0");
  EXPECT_EQ(Tracked(1, 1), "90");
  EXPECT_EQ(Tracked(1, 2), "1/21/2011");
  EXPECT_EQ(Call("100", "1/21/2011"), "10");
}

TEST_F(LastVolume, ComparesDatesWithoutRegardToCase) {
  TrackVolumes(1);
  Call("100", "20 jan");
  EXPECT_EQ(Call("150", "20 JAN"), "50");
  EXPECT_EQ(Tracked(1, 2), "20 jan");
}

TEST_F(LastVolume, StaysZeroWhileTheVolumeIsZeroAndFollowsTheDate) {
  TrackVolumes(1);
  EXPECT_EQ(Call("0"), "0");
  EXPECT_EQ(Call("0", "1/21/2011"), "0");
  EXPECT_EQ(Tracked(1, 1), "0");
  EXPECT_EQ(Tracked(1, 2), "1/21/2011");
  EXPECT_EQ(Call("700", "1/21/2011"), "0");
  EXPECT_EQ(Call("900", "1/21/2011"), "200");
}

TEST_F(LastVolume, TakesNumbersThatTheMacrosHaveStored) {
  TrackVolumes(1);
  facade->masPrevVolume().AsArray()(1, 1) = 400;
  facade->masPrevVolume().AsArray()(1, 2) = "1/20/2011";
  EXPECT_EQ(Call("1000"), "600");
}

TEST_F(LastVolume, MayHaveAFraction) {
  TrackVolumes(1);
  Call("0.5");
  EXPECT_EQ(Call("2"), "1.5");
}

TEST_F(LastVolume, IsTrackedRowByRow) {
  TrackVolumes(2);
  market.quotes = {{"A", {"100"}}, {"B", {"200"}}};
  facade->GetLastQuote(TickersOf({"A", "B"}));
  market.quotes = {{"A", {"110"}}, {"B", {"230"}}};
  const Variant result = facade->GetLastQuote(TickersOf({"A", "B"}));
  EXPECT_EQ(RowOf(result, 1)[0], "10");
  EXPECT_EQ(RowOf(result, 2)[0], "30");
}

TEST_F(LastVolume, IsTrackedByRowsOfTheWholeResultNotOfTheBatch) {
  TrackVolumes(82);
  facade->GetLastQuote(Tickers(82));
  market.quotes["T82"] = {"1007"};
  EXPECT_EQ(RowOf(facade->GetLastQuote(Tickers(82)), 82)[0], "7");
}

TEST_F(LastVolume, StartsAnewWhenTheMacrosClearTheFirstColumn) {
  TrackVolumes(1);
  Call("100");
  facade->masPrevVolume().AsArray()(1, 1) = Variant();
  EXPECT_EQ(Call("150"), "0");
  EXPECT_EQ(Call("160"), "10");
}

TEST_F(LastVolume, IsWrittenToTheFacadesTableAndToNoCopyOfIt) {
  TrackVolumes(1);
  const Variant copy = facade->masPrevVolume();
  Call("100");
  EXPECT_EQ(Tracked(1, 1), "100");
  EXPECT_TRUE(copy.AsArray()(1, 1).IsEmpty());
}

TEST_F(LastVolume, OfATextThatIsNoNumberIsARunTimeError) {
  TrackVolumes(1);
  Call("100");
  EXPECT_EQ(Call("n/a"), "no result");
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("Error: 13, (Type mismatch)"));
}

TEST_F(LastVolume, OfATableOfTheWrongShapeIsARunTimeError) {
  struct Case {
    const char* what;
    Variant table;
    const char* error;
  };
  const Case cases[] = {{"no array", "volumes", "Error: 13, "},
                        {"one dimension", VariantArray(1, 1), "Error: 9, "},
                        {"rows from 2", VariantArray(2, 3, 1, 2), "Error: 9, "},
                        {"one column", VariantArray(1, 1, 2, 2), "Error: 9, "}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    desktop.reports.clear();
    facade->masPrevVolume(c.table);
    EXPECT_EQ(Call("100"), "no result");
    ASSERT_THAT(desktop.reports, SizeIs(1));
    EXPECT_THAT(desktop.reports[0].text, HasSubstr(c.error));
  }
}

TEST_F(LastVolume, ReplacesWhatTheReplyHasThere) {
  Show("LastVolume,Volume");
  EXPECT_THAT(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1), ::testing::ElementsAre("0", "1000"));
}

}  // namespace
}  // namespace mirelo::testing
