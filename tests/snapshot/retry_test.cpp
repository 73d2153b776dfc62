#include <gmock/gmock.h>

#include "automation/runtime_error.h"
#include "diagnostics/CErrorHandler.h"
#include "diagnostics/routine.h"
#include "snapshot/statement_fixture.h"
#include "support/memory_shortage.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// A retry runs the failed statement of GetLastQuote again, and nothing in front of it.
class Retry : public StatementTest {
 protected:
  void ExpectOrdinary(const Variant& result) {
    ASSERT_TRUE(result.IsArray());
    EXPECT_THAT(RowOf(result, 1), ElementsAre("A", "A-Last", "0", "A-52w High"));
    EXPECT_THAT(internet.Resources(), ElementsAre("/req?GetLastQuote(A)"));
    EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
  }
};

TEST_F(Retry, RepeatsAStatementThatFailsTwiceAndThenWorks) {
  faulty_clock.failing_calls = {1, 3};  // between them the report asks for the moment
  Answers({"RETRY", "RETRY"});
  ExpectOrdinary(facade->GetLastQuote(TickersOf({"A"})));
  EXPECT_THAT(ReportedErrors(), ElementsAre(57, 57));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.cMirelo.GetLastQuote at line 0"));
}

TEST_F(Retry, DimensionsTheTableOnceTheColumnsAreThere) {
  facade.reset();
  facade.emplace();
  Mend([&] { facade->LoadMasPosition(); });
  Answers({"RETRY"});
  ExpectOrdinary(facade->GetLastQuote(TickersOf({"A"})));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
}

TEST_F(Retry, ReadsTheBoundsOfTickersThatWereMended) {
  Variant tickers = "A";
  Mend([&] { tickers = TickersOf({"A"}); });
  Answers({"RETRY"});
  ExpectOrdinary(facade->GetLastQuote(tickers));
  EXPECT_THAT(ReportedErrors(), ElementsAre(13));
}

TEST_F(Retry, AppendsATickerOnceToTheBatch) {
  Variant tickers = TickersOf({"A", "B", "C"});
  tickers.AsArray()(1) = VariantArray(0, 1);  // has no text
  Mend([&] { tickers.AsArray()(1) = "mended"; });
  Answers({"RETRY"});
  facade->GetLastQuote(tickers);
  EXPECT_THAT(internet.Resources(), ElementsAre("/req?GetLastQuote(A,mended,C)"));
}

TEST_F(Retry, AppendsTheLastTickerOfAFullBatchOnce) {
  Variant tickers = Tickers(81);
  tickers.AsArray()(80) = VariantArray(0, 1);
  Mend([&] { tickers.AsArray()(80) = "mended"; });
  Answers({"RETRY"});
  facade->GetLastQuote(tickers);
  ASSERT_THAT(internet.requests, SizeIs(1));
  EXPECT_THAT(internet.requests[0].resource, HasSubstr("T79,T80,mended)"));
}

TEST_F(Retry, SendsARequestAgainWhoseFailureReachesTheRoutine) {
  internet.answer = [&](const auto& request) {
    if (internet.requests.size() == 1) throw Errors::OutOfMemory();
    return market.Reply(request.resource);
  };
  BreakFirstReport();
  Answers({"IGNORE", "RETRY"});  // the first answer is lost with its dialog
  const Variant result = facade->GetLastQuote(TickersOf({"A"}));
  EXPECT_THAT(RowOf(result, 1), ElementsAre("A", "A-Last", "0", "A-52w High"));
  EXPECT_THAT(internet.Resources(), ElementsAre("/req?GetLastQuote(A)", "/req?GetLastQuote(A)"));
}

TEST_F(Retry, TracksAVolumeOnceTheTableIsThere) {
  facade->masPrevVolume("no table");
  Mend([&] { TrackVolumes(1); });
  Answers({"RETRY"});
  ExpectOrdinary(facade->GetLastQuote(TickersOf({"A"})));
  EXPECT_EQ(Tracked(1, 1), "1000");
  EXPECT_EQ(Tracked(1, 2), "1/20/2011");
}

// So many pieces take far more memory than the text that they are cut from, so that the splits alone run
// short.
constexpr std::size_t kManyPieces = 10'000;
constexpr std::size_t kMemoryOfManyPieces = kManyPieces * sizeof(std::string_view);

TEST_F(Retry, SplitsALineAgain) {
  AnswerWith("OK\r\n" + market.Line("A") + std::string(kManyPieces, ','));
  const MemoryShortage shortage(kMemoryOfManyPieces);
  Answers({"RETRY"});
  ExpectOrdinary(facade->GetLastQuote(TickersOf({"A"})));
  EXPECT_THAT(ReportedErrors(), ElementsAre(7));
}

TEST_F(Retry, SplitsAReplyAgain) {
  TrackVolumes(1);
  std::string reply = "OK\r\n" + market.Line("A");
  for (std::size_t i = 0; i < kManyPieces; ++i) reply += "\r\n";
  AnswerWith(reply);
  const MemoryShortage shortage(kMemoryOfManyPieces);
  Answers({"RETRY", "ABORT"});
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(ReportedErrors(), ElementsAre(7, 9));  // the split, and the first of the lines without fields
  EXPECT_EQ(Tracked(1, 1), "1000");
}

TEST_F(Retry, AsksAtAPortThatWasMended) {
  Save("HTTPPort", 40000);
  Save("Webaddress", "10.0.0.7");
  Mend([&] { Save("HTTPPort", 8080); });
  Answers({"RETRY"});
  ExpectOrdinary(facade->GetLastQuote(TickersOf({"A"})));
  EXPECT_THAT(ReportedErrors(), ElementsAre(6));
  EXPECT_EQ(internet.requests.at(0).host, "10.0.0.7");
  EXPECT_EQ(internet.requests.at(0).port, 8080);
}

// No retry mends the reply, so the user gives in, and nothing behind the subtraction ran until then.
TEST_F(Retry, SubtractsAgainAndDoesNothingElse) {
  TrackVolumes(1);
  facade->GetLastQuote(TickersOf({"A"}));
  market.quotes["A"].volume = "n/a";
  desktop.while_open = [&] { EXPECT_EQ(Tracked(1, 1), "1000"); };
  Answers({"RETRY", "RETRY", "IGNORE"});
  const Variant result = facade->GetLastQuote(TickersOf({"A"}));
  EXPECT_THAT(RowOf(result, 1), ElementsAre("A", "A-Last", "A-LastVolume", "A-52w High"));
  EXPECT_THAT(ReportedErrors(), ElementsAre(13, 13, 13));
  EXPECT_EQ(Tracked(1, 1), "n/a");
}

// The list is shorter while the second position is read, and whole again for the retry.
TEST_F(Retry, ReadsAPositionOnceItIsThere) {
  Show("52w High,Last,Bid");
  AnswerWith("OK\r\n" + ShortLine("A", 14));
  desktop.while_open = [&] { Show(desktop.reports.size() == 1 ? "Last" : "52w High,Last,Bid"); };
  Answers({"IGNORE", "RETRY"});
  EXPECT_THAT(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1), ElementsAre("<empty>", "A-Last", "A-Bid"));
  EXPECT_THAT(ReportedErrors(), ElementsAre(9, 9));  // the cell, and the position
}

TEST_F(Retry, ShowsAMessageAgain) {
  Save("HTTPPort", 0);
  desktop.while_open = [&] {
    if (desktop.boxes.size() == 1 && desktop.reports.empty()) throw Errors::OutOfMemory();
  };
  Answers({"RETRY"});
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
  EXPECT_THAT(desktop.boxes, SizeIs(2));
  EXPECT_THAT(ReportedErrors(), ElementsAre(7));
}

TEST_F(Retry, PopsOnceTheTraceCanBeWritten) {
  CErrorHandler& handler = mGlobal::ErrorHandler();
  handler.TracingLogFile("no such folder/traces.txt");
  faulty_clock.on_now = [&](int call) {
    if (call == 1) handler.TracingEnabled(true);  // behind the last push
  };
  Mend([&] { handler.TracingEnabled(false); });
  Answers({"RETRY"});
  ExpectOrdinary(facade->GetLastQuote(TickersOf({"A"})));
  EXPECT_THAT(ReportedErrors(), ElementsAre(ErrorNumber(0x800443FC)));
}

TEST_F(Retry, OfThePushGoesOnAsUsual) {
  CErrorHandler& handler = mGlobal::ErrorHandler();
  handler.TracingLogFile("no such folder/traces.txt");
  handler.TracingEnabled(true);
  Mend([&] { handler.TracingEnabled(false); });
  Answers({"RETRY"});
  EXPECT_TRUE(facade->GetLastQuote(TickersOf({"A"})).IsArray());
  EXPECT_THAT(handler.CallStack(), SizeIs(1));  // pushed twice, popped once
}

}  // namespace
}  // namespace mirelo::testing
