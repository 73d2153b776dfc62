#include <gmock/gmock.h>

#include "automation/runtime_error.h"
#include "diagnostics/CErrorHandler.h"
#include "diagnostics/routine.h"
#include "snapshot/statement_fixture.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// An aborted GetLastQuote returns the empty text and raises nothing.
class AbortedQuote : public StatementTest {};

TEST_F(AbortedQuote, LosesItsResultButNotTheVolumesItHadTracked) {
  TrackVolumes(2);
  AnswerWith("OK\r\n" + market.Line("A") + "\r\n" + ShortLine("B", 9));
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A", "B"}))));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_EQ(Tracked(1, 1), "1000");
  EXPECT_EQ(Tracked(2, 1), "");
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

// The line end makes a last line without fields.
TEST_F(AbortedQuote, IsWhatALineEndBehindTheLastLineGives) {
  TrackVolumes(2);
  AnswerWith("OK\r\n" + market.Line("A") + "\r\n");
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_EQ(Tracked(1, 1), "1000");
  EXPECT_EQ(Tracked(1, 2), "1/20/2011");
  EXPECT_EQ(Tracked(2, 1), "");
}

TEST_F(AbortedQuote, IsWhatMoreLinesThanRowsGive) {
  AnswerWith("OK\r\n" + market.Line("A") + "\r\n" + market.Line("B"));
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(AbortedQuote, IsWhatMoreLinesThanTrackedRowsGive) {
  TrackVolumes(1);
  AnswerWith("OK\r\n" + market.Line("A") + "\r\n" + market.Line("B"));
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_EQ(Tracked(1, 1), "1000");
}

TEST_F(AbortedQuote, LetsTheRoutineThatCalledItGoOn) {
  AnswerWith("OK\r\nA");
  std::vector<std::string> done;
  Variant result;
  Routine("Mirelo.frmMirelo.Outer", [&](Frame& frame) {
    STEP(result = facade->GetLastQuote(TickersOf({"A"})));
    EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
    STEP(done.push_back("outer goes on"));
    frame.pop();
  });
  EXPECT_TRUE(IsEmptyText(result));
  EXPECT_THAT(done, ElementsAre("outer goes on"));
  EXPECT_THAT(desktop.reports, SizeIs(1));
}

TEST_F(AbortedQuote, SendsNoFurtherRequests) {
  AnswerWith("OK\r\nA");
  facade->GetLastQuote(Tickers(200));
  EXPECT_THAT(internet.requests, SizeIs(1));
}

TEST_F(AbortedQuote, LosesAResultThatWasHandedOverWhenThePopFails) {
  CErrorHandler& handler = mGlobal::ErrorHandler();
  handler.TracingLogFile("no such folder/traces.txt");
  faulty_clock.on_now = [&](int call) {
    if (call == 1) handler.TracingEnabled(true);
  };
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(handler.CallStack(), IsEmpty());
}

TEST_F(AbortedQuote, AtItsPushDoesNothing) {
  CErrorHandler& handler = mGlobal::ErrorHandler();
  handler.TracingLogFile("no such folder/traces.txt");
  handler.TracingEnabled(true);
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(internet.requests, IsEmpty());
  EXPECT_THAT(handler.CallStack(), IsEmpty());
}

// The innermost routine is the one that is aborted: the call that made it goes on with an empty reply.
TEST_F(AbortedQuote, IsTheDownloadWhenTheTransferFails) {
  internet.answer = [](const auto&) -> std::string { throw Errors::OutOfMemory(); };
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, ::testing::HasSubstr("\tin Mirelo.cMirelo.DownloadURL at line 0\r\n"));
  EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{"Data retrieval error.", 16, "Dovanta2"}));
}

}  // namespace
}  // namespace mirelo::testing
