#include <gmock/gmock.h>

#include "automation/runtime_error.h"
#include "diagnostics/CErrorHandler.h"
#include "snapshot/statement_fixture.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// An ignored statement of GetLastQuote is skipped, and the next one runs.
class Ignore : public StatementTest {
 protected:
  Ignore() { desktop.report_answers.assign(100, "IGNORE"); }
};

TEST_F(Ignore, OfAShortLinesLastVolumeStillTracksAndFillsColumns) {
  TrackVolumes(1);
  AnswerWith("OK\r\n" + ShortLine("A", 13));
  const Variant result = facade->GetLastQuote(TickersOf({"A"}));
  EXPECT_EQ(Tracked(1, 1), "1000");
  EXPECT_EQ(Tracked(1, 2), "1/20/2011");
  EXPECT_THAT(RowOf(result, 1), ElementsAre("A", "A-Last", "<empty>", "<empty>"));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9, 9, 9));  // the store, and the two cells
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(Ignore, OfACellFillsTheNextOnes) {
  Show("52w High,Last,52w Low,Ticker");
  AnswerWith("OK\r\n" + ShortLine("A", 14));
  EXPECT_THAT(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1),
              ElementsAre("<empty>", "A-Last", "<empty>", "A"));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9, 9));
}

TEST_F(Ignore, OfTheSubtractionLeavesTheReplysFieldAndStoresTheVolume) {
  TrackVolumes(1);
  facade->GetLastQuote(TickersOf({"A"}));
  market.quotes["A"].volume = "n/a";
  EXPECT_EQ(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1)[2], "A-LastVolume");
  EXPECT_EQ(Tracked(1, 1), "n/a");
  EXPECT_THAT(ReportedErrors(), ElementsAre(13));
}

TEST_F(Ignore, OfTheSubtractionLeavesNothingOfTheLineBefore) {
  TrackVolumes(2);
  facade->GetLastQuote(TickersOf({"A", "B"}));
  market.quotes["A"].volume = "1500";
  market.quotes["B"].volume = "n/a";
  const Variant result = facade->GetLastQuote(TickersOf({"A", "B"}));
  EXPECT_EQ(RowOf(result, 1)[2], "500");
  EXPECT_EQ(RowOf(result, 2)[2], "B-LastVolume");
  EXPECT_THAT(ReportedErrors(), ElementsAre(13));
}

// The first statement of the block that the condition guards is the next one.
TEST_F(Ignore, OfAConditionEntersItsBlock) {
  TrackVolumes(1);
  facade->masPrevVolume().AsArray()(1, 1) = "n/a";  // compares with 0 as little as with anything
  EXPECT_EQ(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1)[2], "0");
  EXPECT_EQ(Tracked(1, 1), "1000");
  EXPECT_THAT(ReportedErrors(), ElementsAre(13));
}

TEST_F(Ignore, OfATableOfTheWrongShapeSkipsEachStatementThatNeedsIt) {
  facade->masPrevVolume(VariantArray(1, 1));
  EXPECT_THAT(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1),
              ElementsAre("A", "A-Last", "0", "A-52w High"));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9, 9, 9));  // the condition and the two stores
}

TEST_F(Ignore, OfTheEmptyLineBehindALastLineEndKeepsTheRows) {
  internet.answer = [&](const auto& request) { return market.Reply(request.resource) + "\r\n"; };
  const Variant result = facade->GetLastQuote(TickersOf({"A"}));
  EXPECT_THAT(RowOf(result, 1), ElementsAre("A", "A-Last", "0", "A-52w High"));
  EXPECT_EQ(result.AsArray().UBound(1), 1);
  EXPECT_THAT(ReportedErrors(),
              ElementsAre(9, 9, 9, 9, 9));  // the store and four cells of a row that is not there
}

// The empty line counts as a row, so that the next batch begins one row too low.
TEST_F(Ignore, OfTheEmptyLineMovesTheRowsOfTheNextBatch) {
  internet.answer = [&](const auto& request) { return market.Reply(request.resource) + "\r\n"; };
  const Variant result = facade->GetLastQuote(Tickers(83));
  EXPECT_THAT(RowOf(result, 81), ElementsAre("T81", "T81-Last", "0", "T81-52w High"));
  EXPECT_THAT(RowOf(result, 82), ElementsAre("<empty>", "<empty>", "<empty>", "<empty>"));
  EXPECT_THAT(RowOf(result, 83), ElementsAre("T82", "T82-Last", "0", "T82-52w High"));
}

TEST_F(Ignore, OfLinesThatHaveNoRowKeepsTheOthers) {
  AnswerWith("OK\r\n" + market.Line("A") + "\r\n" + market.Line("B"));
  const Variant result = facade->GetLastQuote(TickersOf({"A"}));
  EXPECT_EQ(result.AsArray().UBound(1), 1);
  EXPECT_THAT(RowOf(result, 1), ElementsAre("A", "A-Last", "0", "A-52w High"));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9, 9, 9, 9));
}

TEST_F(Ignore, OfATickerLeavesItOutOfTheBatch) {
  Variant tickers = TickersOf({"A", "B", "C"});
  tickers.AsArray()(1) = VariantArray(0, 1);
  facade->GetLastQuote(tickers);
  EXPECT_THAT(internet.Resources(), ElementsAre("/req?GetLastQuote(A,,C)"));
}

TEST_F(Ignore, OfTheTickersBoundsTriesTheOneTickerOfUnsetBounds) {
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote("A")));
  EXPECT_THAT(ReportedErrors(), ElementsAre(13, 13));  // the bounds, and the ticker
  EXPECT_THAT(internet.requests, IsEmpty());
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(Ignore, OfTheDisplacedTimeFillsRowsWithoutIt) {
  Show("Time,Last");
  faulty_clock.failing_calls = {1};
  EXPECT_THAT(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1), ElementsAre("", "A-Last"));
}

TEST_F(Ignore, OfTheDisplacedTimeOfALaterBatchKeepsTheFormerTime) {
  Show("Time");
  internet.answer = [&](const auto& request) {
    faulty_clock.Advance(1);
    return market.Reply(request.resource);
  };
  faulty_clock.failing_calls = {2};
  EXPECT_THAT(RowOf(facade->GetLastQuote(Tickers(82)), 82), ElementsAre("08:36:14"));
}

TEST_F(Ignore, OfTheMissingColumnsStillAsksAndTracks) {
  facade.reset();
  facade.emplace();
  TrackVolumes(1);
  const Variant result = facade->GetLastQuote(TickersOf({"A"}));
  EXPECT_EQ(Tracked(1, 1), "1000");
  EXPECT_TRUE(result.IsArray());
  // The table, and for the line the bounds of the columns, the one position that the loop is entered with and
  // its cell.
  EXPECT_THAT(ReportedErrors(), ElementsAre(9, 9, 9, 9));
}

// The list shrinks while the first cell's failure is reported, so that the second position is not there.
TEST_F(Ignore, OfAPositionFillsTheCellFromThePositionBefore) {
  Show("52w High,Last");
  AnswerWith("OK\r\n" + ShortLine("A", 14));
  Mend([&] { Show("Last"); });
  EXPECT_THAT(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1), ElementsAre("<empty>", "<empty>"));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9, 9, 9));  // the cell, the position, and the same field again
}

TEST_F(Ignore, OfARequestIsAnEmptyReply) {
  internet.answer = [](const auto&) -> std::string { throw Errors::OutOfMemory(); };
  BreakFirstReport();
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{"Data retrieval error.", 16, "Dovanta2"}));
}

// The reply of the batch before still stands in its variable.
TEST_F(Ignore, OfALaterRequestReadsTheFormerReplyAgain) {
  internet.answer = [&](const auto& request) {
    if (internet.requests.size() == 2) throw Errors::OutOfMemory();
    return market.Reply(request.resource);
  };
  BreakFirstReport();
  const Variant result = facade->GetLastQuote(Tickers(163));
  ASSERT_TRUE(result.IsArray());
  EXPECT_EQ(RowOf(result, 81)[0], "T81");
  EXPECT_EQ(RowOf(result, 82)[0], "T1");
  EXPECT_EQ(RowOf(result, 162)[0], "T81");
  EXPECT_EQ(RowOf(result, 163)[0], "T163");
  EXPECT_THAT(internet.requests, SizeIs(3));
}

TEST_F(Ignore, OfAMessageLeavesTheRoutineAllTheSame) {
  Save("HTTPPort", 0);
  desktop.while_open = [&] {
    if (desktop.reports.empty()) throw Errors::OutOfMemory();
  };
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(desktop.boxes, SizeIs(1));
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(Ignore, OfTheAddressShowsTheMessageForThePort) {
  Save("HTTPPort", 8080);
  registry.Raise("RegOpenKeyExA", 2);  // the first is for the port
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(ReportedErrors(), SizeIs(1));
  EXPECT_THAT(desktop.reports.at(0).text, HasSubstr("\tin Mirelo.cMirelo.GetPortWebAddress at line 0"));
  ASSERT_THAT(desktop.boxes, SizeIs(1));
  EXPECT_THAT(desktop.boxes[0].text, HasSubstr("QouteTracker -> Preferences."));
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(Ignore, OfThePortShowsTheMessageForIt) {
  Save("HTTPPort", 40000);
  Save("Webaddress", "10.0.0.7");
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(ReportedErrors(), ElementsAre(6));
  ASSERT_THAT(desktop.boxes, SizeIs(1));
  EXPECT_THAT(desktop.boxes[0].text, HasSubstr("QouteTracker -> Preferences."));
}

}  // namespace
}  // namespace mirelo::testing
