#include <gmock/gmock.h>

#include "snapshot/last_quote_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

// The columns of a result are those that LoadMasPosition has read.
class ColumnOrder : public LastQuoteTest {
 protected:
  std::vector<std::string> Row() { return RowOf(facade->GetLastQuote(TickersOf({"A"})), 1); }
};

TEST_F(ColumnOrder, IsTheDefaultListWhenNothingIsStored) {
  facade->LoadMasPosition();
  EXPECT_THAT(Row(),
              ElementsAre("A", "A-Last", "A-Change", "A-Bid", "A-Ask", "1/20/2011 8:36:13 AM", "08:36:13"));
}

TEST_F(ColumnOrder, IsThatOfTheList) {
  Show("52w High,Tick,Ticker,NumTrades");
  EXPECT_THAT(Row(), ElementsAre("A-52w High", "A-Tick", "A", "A-NumTrades"));
}

TEST_F(ColumnOrder, HoldsEachNameOfTheVocabulary) {
  Show(
      "Ticker,Last,Bid,Ask,Change,Tick,Volume,High,Low,BidSize,AskSize,AvgTrade,NumTrades,Open,52w Low,52w "
      "High");
  EXPECT_THAT(Row(), ElementsAre("A", "A-Last", "A-Bid", "A-Ask", "A-Change", "A-Tick", "1000", "A-High",
                                 "A-Low", "A-BidSize", "A-AskSize", "A-AvgTrade", "A-NumTrades", "A-Open",
                                 "A-52w Low", "A-52w High"));
}

TEST_F(ColumnOrder, StartsAtOne) {
  Show("Last");
  const Variant result = facade->GetLastQuote(TickersOf({"A"}));
  EXPECT_EQ(result.AsArray().LBound(2), 1);
  EXPECT_EQ(result.AsArray().UBound(2), 1);
  EXPECT_THAT(RowOf(result, 1), ElementsAre("A-Last"));
}

TEST_F(ColumnOrder, MayNameAColumnTwiceInAnyCase) {
  Show("last,LAST,52W LOW");
  EXPECT_THAT(Row(), ElementsAre("A-Last", "A-Last", "A-52w Low"));
}

TEST_F(ColumnOrder, LeavesColumnsOfUnknownNamesEmpty) {
  Show("Price,Ticker, Last,Last ,,Last");
  EXPECT_THAT(Row(), ElementsAre("<empty>", "A", "<empty>", "<empty>", "<empty>", "A-Last"));
}

TEST_F(ColumnOrder, StaysWhenTheListIsEmpty) {
  Show("Bid");
  Show("");
  EXPECT_THAT(Row(), ElementsAre("A-Bid"));
}

TEST_F(ColumnOrder, IsReplacedByTheNextList) {
  Show("Bid,Ask,Last");
  Show("Tick");
  EXPECT_THAT(Row(), ElementsAre("A-Tick"));
}

TEST_F(ColumnOrder, IsMissingBeforeTheFirstListThatIsNotEmpty) {
  Show("");
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, ::testing::HasSubstr("Error: 9, (Subscript out of range)"));
}

TEST_F(ColumnOrder, PopsItsNameWithAndWithoutAList) {
  Show("Last");
  Show("");
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), ::testing::IsEmpty());
}

TEST_F(ColumnOrder, StaysWhenTheRegistryFailsAndTheUserAborts) {
  Show("Bid");
  Save("ListRight", "Ask");
  registry.Raise("RegQueryValueExA");
  facade->LoadMasPosition();
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, ::testing::HasSubstr("\tin Mirelo.cMirelo.LoadMasPosition at line 0"));
  EXPECT_THAT(Row(), ElementsAre("A-Bid"));
}

// Without the list there is only its variable's empty text, as if that were stored.
TEST_F(ColumnOrder, StaysWhenTheRegistryFailsAndTheUserIgnores) {
  Show("Bid");
  Save("ListRight", "Ask");
  registry.Raise("RegQueryValueExA");
  Answers({"IGNORE"});
  facade->LoadMasPosition();
  EXPECT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), ::testing::IsEmpty());
  EXPECT_THAT(Row(), ElementsAre("A-Bid"));
}

TEST_F(ColumnOrder, IsReadOnTheSecondTryWhenTheUserRetries) {
  Save("ListRight", "Ask");
  registry.Raise("RegQueryValueExA");
  Answers({"RETRY"});
  facade->LoadMasPosition();
  EXPECT_THAT(Row(), ElementsAre("A-Ask"));
}

}  // namespace
}  // namespace mirelo::testing
