#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "diagnostics/CErrorHandler.h"
#include "dialog/portfolio_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const ScriptedDesktop::Box kUpdated{"QouteTracker portfolio updated", host::Desktop::kInformation,
                                    "Dovanta2"};

std::size_t SymbolsOf(const std::string& list) {
  return static_cast<std::size_t>(std::count(list.begin(), list.end(), ',')) + 1;
}

class Exporting : public PortfolioTest {
 protected:
  void Export() { form.ButExport.UserPress(); }
};

TEST_F(Exporting, TellsThatTheGridIsEmptyBeforeAnyRequest) {
  for (const std::int32_t rows : {1, 0}) {
    SCOPED_TRACE(rows);
    desktop.boxes.clear();
    FG.Rows(rows);
    Export();
    EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{"Tickers list is empty.", 48, "Dovanta2"}));
  }
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(Exporting, AddsTheTickersThatThePortfolioLacksInTheirOrder) {
  Add({"Z", "MSFT", "B", "A"});
  Export();
  EXPECT_THAT(Added(), ElementsAre("Z,B,A"));
  EXPECT_THAT(desktop.boxes, ElementsAre(kUpdated));
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(Exporting, LooksForTickersWithoutRegardToCase) {
  tracker.symbols = "OK\r\nmsft,Ibm";
  Add({"MSFT", "IBM"});
  Export();
  EXPECT_THAT(Added(), IsEmpty());
}

TEST_F(Exporting, SaysNothingWhenThereIsNothingToAdd) {
  Add({"IBM", "MSFT"});
  Export();
  EXPECT_THAT(internet.Resources(), ElementsAre("/req?EnumPorts()", "/req?EnumPortSymbols(Main)"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(Exporting, AddsAllTickersToAnEmptyPortfolio) {
  tracker.symbols = "OK\r\n";
  Add({"MSFT"});
  Export();
  EXPECT_THAT(Added(), ElementsAre("MSFT"));
}

TEST_F(Exporting, KeepsRepeatsOfTheGrid) {
  FillGrid(3);
  FG.TextMatrix(3, 0, "T1");
  Export();
  EXPECT_THAT(Added(), ElementsAre("T1,T2,T1"));
}

TEST_F(Exporting, DoesNotEncodeTickers) {
  FillGrid(1);
  FG.TextMatrix(1, 0, "A&B 100%)");
  Export();
  EXPECT_EQ(internet.Resources().back(), "/req?AddStocksToPort(CURRENT,A&B 100%))");
}

TEST_F(Exporting, PutsEightyOneSymbolsIntoARequestAndTellsOfATailOnly) {
  struct Case {
    std::int32_t tickers;
    std::vector<std::size_t> requests;  // symbols in each
    bool tells;
  };
  for (const Case& c : {Case{1, {1}, true}, Case{80, {80}, true}, Case{81, {81}, false},
                        Case{82, {81, 1}, true}, Case{162, {81, 81}, false}, Case{163, {81, 81, 1}, true}}) {
    SCOPED_TRACE(c.tickers);
    desktop.boxes.clear();
    internet.requests.clear();
    FillGrid(c.tickers);
    Export();

    std::vector<std::size_t> counts;
    std::string all;
    for (const std::string& list : Added()) {
      counts.push_back(SymbolsOf(list));
      all += (all.empty() ? "" : ",") + list;
    }
    EXPECT_EQ(counts, c.requests);
    std::string grid;
    for (const std::string& ticker : Tickers()) grid += (grid.empty() ? "" : ",") + ticker;
    EXPECT_EQ(all, grid);
    if (c.tells) {
      EXPECT_THAT(desktop.boxes, ElementsAre(kUpdated));
    } else {
      EXPECT_THAT(desktop.boxes, IsEmpty());
    }
  }
}

TEST_F(Exporting, StopsAtARequestThatNobodyAnswers) {
  tracker.added.reset();
  FillGrid(200);
  Export();
  EXPECT_THAT(Added(), SizeIs(1));
  EXPECT_THAT(desktop.boxes, ElementsAre(kRunQuoteTracker));
}

TEST_F(Exporting, StopsAtARequestThatIsRefused) {
  tracker.added = "ERROR: no such portfolio";
  FillGrid(82);
  Export();
  EXPECT_THAT(Added(), SizeIs(1));
  EXPECT_THAT(desktop.boxes, ElementsAre(kAdjustPort));
}

TEST_F(Exporting, TellsOfATailThatFailsWithItsOwnMessageOnly) {
  FillGrid(82);
  tracker.on_request = [this](const std::string& resource) {
    if (resource.ends_with(",T82)")) tracker.added.reset();
  };
  Export();
  EXPECT_THAT(Added(), SizeIs(2));
  EXPECT_THAT(desktop.boxes, ElementsAre(kRunQuoteTracker));
}

TEST_F(Exporting, TakesAnOkInAnyCaseWithMoreBehindIt) {
  for (const char* reply : {"OK", "ok\r\n", "Okay, 1 added", "OK 1"}) {
    SCOPED_TRACE(reply);
    desktop.boxes.clear();
    tracker.added = reply;
    FillGrid(1);
    Export();
    EXPECT_THAT(desktop.boxes, ElementsAre(kUpdated));
  }
}

TEST_F(Exporting, RefusesAReplyWithoutOkInFront) {
  for (const char* reply : {" OK", "O", "K", "\r\nOK"}) {
    SCOPED_TRACE(reply);
    desktop.boxes.clear();
    tracker.added = reply;
    FillGrid(1);
    Export();
    EXPECT_THAT(desktop.boxes, ElementsAre(kAdjustPort));
  }
}

TEST_F(Exporting, StopsWhenThePortfolioCannotBeRead) {
  tracker.symbols.reset();
  FillGrid(1);
  Export();
  EXPECT_THAT(Added(), IsEmpty());
  EXPECT_THAT(desktop.boxes, ElementsAre(kRunQuoteTracker));
}

TEST_F(Exporting, StopsWithoutAWordWhenThereIsNoPortfolio) {
  tracker.names = "OK\r\n\r\n";
  FillGrid(1);
  Export();
  EXPECT_THAT(internet.requests, SizeIs(1));
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(Exporting, LeavesANameOnTheCallStackBehindAMessage) {
  const auto names = [] {
    std::vector<std::string> names;
    for (const auto& entry : mGlobal::ErrorHandler().CallStack()) names.push_back(entry.procedure);
    return names;
  };
  Export();
  EXPECT_THAT(names(), ElementsAre("Mirelo.frmMirelo.ButExport_Click"));

  mGlobal::ErrorHandler().CallStackClear();
  tracker.added = "ERROR";
  FillGrid(1);
  Export();
  EXPECT_THAT(names(), ElementsAre("Mirelo.frmMirelo.ButExport_Click"))
      << "the click pops a name, which is that of the request";
}

// While the portfolio is fetched the dialog lives on.
TEST_F(Exporting, AddsNothingFromAGridThatShrinksMeanwhileWhenThatIsAborted) {
  FillGrid(2);
  tracker.on_request = [this](const std::string&) { FG.Cols(0); };
  Answers({"ABORT"});
  Export();
  EXPECT_THAT(ReportedErrors(), ElementsAre(381));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.ButExport_Click at line 0"));
  EXPECT_THAT(Added(), IsEmpty());
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(Exporting, FindsTheTickersOfVerticalTablesInTheirColumn) {
  Add({"A"});
  form.chkVerTable.UserClick();
  ASSERT_THAT(Tickers(), ElementsAre("A"));
  Export();
  EXPECT_THAT(Added(), ElementsAre("A"));
}

class Importing : public PortfolioTest {
 protected:
  void Import() { form.ButImport.UserPress(); }
};

TEST_F(Importing, AddsTheSymbolsInCapitalsBehindThoseOfTheGrid) {
  tracker.symbols = "OK\r\nmsft,Ibm";
  Add({"A"});
  Import();
  EXPECT_THAT(Tickers(), ElementsAre("A", "MSFT", "IBM"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(Importing, AddsNoTickerTwice) {
  tracker.symbols = "OK\r\nMSFT,msft,,GE";
  Add({"GE"});
  Import();
  EXPECT_THAT(Tickers(), ElementsAre("GE", "MSFT"));
}

TEST_F(Importing, GivesAGridWithoutRowsItsHeader) {
  FG.Rows(0);
  Import();
  EXPECT_EQ(FG.Rows(), 4);
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM", "GE"));
}

TEST_F(Importing, LeavesTheGridWhenThePortfolioCannotBeRead) {
  form.txtHTTPPort.Text("80a");
  FG.Rows(0);
  Import();
  EXPECT_EQ(FG.Rows(), 0);
  EXPECT_THAT(internet.requests, IsEmpty());
  EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{"The value must be a digit.", 16, "Dovanta2"}));
}

TEST_F(Importing, SaysNothingWhenThereIsNoPortfolio) {
  tracker.names = "OK\r\n\r\n";
  Add({"A"});
  Import();
  EXPECT_THAT(Tickers(), ElementsAre("A"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
