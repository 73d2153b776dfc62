// Which columns the dialog lists after it has read the quote table.

#include "worksheet/table_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class LoadingColumns : public TableTest {
 protected:
  ~LoadingColumns() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  // The columns of vertical tables, as the grid shows them.
  Texts VerticalFields() {
    Texts headers = Headers();
    headers.erase(headers.begin());  // the fixed column's
    return headers;
  }
};

TEST_F(LoadingColumns, TakesTheTablesHeadersInTheirOrder) {
  Open();
  EXPECT_EQ(Shown(), "Ticker,Bid,Tick");
  EXPECT_THAT(VerticalFields(), ElementsAre("Ticker", "Bid"));
}

TEST_F(LoadingColumns, HidesAllOthersInTheOrderOfTheVocabulary) {
  Open();
  EXPECT_EQ(Hidden(),
            "Date,Time,Last,Ask,Change,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,NumTrades,Open,"
            "52w Low,52w High");
}

TEST_F(LoadingColumns, HidesNothingWhenTheTableHasAll) {
  Columns({"Ticker", "Open", "Date", "Time", "Last", "Bid", "Ask", "Change", "Tick", "Volume", "High", "Low",
           "BidSize", "AskSize", "LastVolume", "AvgTrade", "NumTrades", "52w Low", "52w High"});
  Open();
  EXPECT_EQ(Hidden(), "");
  EXPECT_THAT(Shown(), HasSubstr("Ticker,Open,Date"));
}

TEST_F(LoadingColumns, PassesOverHeadersThatAreNoColumns) {
  Columns({"Ticker", "Price", "Last"});
  Open();
  EXPECT_EQ(Shown(), "Ticker,Last");
  EXPECT_THAT(Hidden(), Not(HasSubstr("Price")));
}

TEST_F(LoadingColumns, ListsNothingWhenNoHeaderIsAColumn) {
  Columns({"Paper", "Price"});
  Open();
  EXPECT_EQ(Shown(), "");
  EXPECT_THAT(Hidden(), HasSubstr("Ticker,Date,Time,Last"));
}

TEST_F(LoadingColumns, KeepsTheLettersOfTheSheet) {
  Columns({"ticker", "LAST"});
  Open();
  EXPECT_EQ(Shown(), "ticker,LAST");
  EXPECT_THAT(Hidden(), HasSubstr("Date,Time,Bid"));  // neither Ticker nor Last is among them
}

TEST_F(LoadingColumns, ListsARepeatedHeaderOnce) {
  Columns({"Ticker", "Last", "Bid", "last"});
  Open();
  EXPECT_EQ(Shown(), "Ticker,Last,Bid");
}

TEST_F(LoadingColumns, StopsAtAGapInTheHeaders) {
  Columns({"Ticker", "Last"});
  Put("D2", "Bid");
  Open();
  EXPECT_EQ(Shown(), "Ticker,Last");
}

TEST_F(LoadingColumns, ReadsTheWholeRowBehindASingleHeader) {
  Columns({"Ticker"});
  Open();
  EXPECT_EQ(Shown(), "Ticker");
  EXPECT_THAT(Hidden(), HasSubstr("Date,Time,Last,Bid"));
}

TEST_F(LoadingColumns, TakesHeadersThatAreNoTextsForUnknown) {
  Columns({"Ticker", "Last"});
  Put("C2", 12.5);
  Put("D2", true);
  Put("E2", "Bid");
  Open();
  EXPECT_EQ(Shown(), "Ticker,Last,Bid");
}

// The width of the table that was there, which what replaces it has to clear.
TEST_F(LoadingColumns, CountsTheHeadersThatAreColumns) {
  struct Case {
    const char* name;
    Texts headers;
    int count;
  };
  const std::vector<Case> cases{
      {"all", {"Ticker", "Bid", "Tick"}, 3},
      {"with an unknown one", {"Ticker", "Price", "Last"}, 2},
      {"with repeats", {"Ticker", "Last", "Bid", "last"}, 4},
      {"a single one", {"Ticker"}, 1},
      {"none", {"Paper", "Price"}, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Columns(c.headers);
    Open();
    EXPECT_EQ(form.PrevColumnCount(), c.count);
  }
}

TEST_F(LoadingColumns, CountsNoHeadersWithoutATableOrTickers) {
  Open();
  ASSERT_EQ(form.PrevColumnCount(), 3);
  Range("A3:A4")->Clear();
  Open();
  EXPECT_EQ(form.PrevColumnCount(), -1);
  sheet->Name("Quotes");
  Open();
  EXPECT_EQ(form.PrevColumnCount(), -1);
}

// Without a table

TEST_F(LoadingColumns, GoesByTheSettingsWithoutATable) {
  sheet->Name("Quotes");
  Put("A1", "SnapShot( 15 sec)");
  Open();
  EXPECT_EQ(Shown(), "Ticker,Last,Ask");
  EXPECT_EQ(Hidden(), "Volume,High,Tick");
  EXPECT_THAT(Tickers(), IsEmpty());
  EXPECT_EQ(form.txtSec.Text(), "60");
  EXPECT_EQ(form.chkUpdOrNot.Value(), 1);
  EXPECT_THAT(VerticalFields(), ElementsAre("Ticker", "Last", "Ask"));
}

TEST_F(LoadingColumns, OffersTheQuoteSourcesWithoutATable) {
  sheet->Name("Quotes");
  Open();
  EXPECT_GT(form.ComQuoteSource.ListCount(), 0);
  EXPECT_NE(form.ComQuoteSource.Text(), "");
}

TEST_F(LoadingColumns, KnowsTheTableByTheExactNameOnly) {
  sheet->Name("DOVANTA2_quotes");
  Open();
  EXPECT_EQ(Shown(), "Ticker,Last,Ask");
}

TEST_F(LoadingColumns, FindsTheTableOnAnySheetOfTheWorkbook) {
  sheets->Add();
  sheets->Add();
  ASSERT_EQ(sheet->Index(), 3);
  Open();
  EXPECT_EQ(Shown(), "Ticker,Bid,Tick");
}

TEST_F(LoadingColumns, GoesByTheSettingsForATableWithoutTickers) {
  Range("A3:A4")->Clear();
  Open();
  EXPECT_EQ(Shown(), "Ticker,Last,last,Ask");  // not even the repeat goes
  EXPECT_EQ(Hidden(), "Volume,High,Tick");
  EXPECT_THAT(Tickers(), IsEmpty());
}

TEST_F(LoadingColumns, GoesByTheSettingsForAnEmptySheet) {
  Range("A1:C4")->Clear();
  Open();
  EXPECT_EQ(Shown(), "Ticker,Last,last,Ask");
  EXPECT_EQ(form.ComQuoteSource.ListCount(), 0);
}

// Failures

TEST_F(LoadingColumns, ReportsThatThereIsNoSpreadsheet) {
  facade->m_ObjExcelApplication(nullptr);
  Answers({"ABORT"});
  Open();
  EXPECT_THAT(ReportedErrors(), ElementsAre(91));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.LoadTickers at line 0"));
  EXPECT_EQ(Shown(), "Ticker,Last,last,Ask");
}

TEST_F(LoadingColumns, ReadsTheTableOnceTheSpreadsheetIsThere) {
  facade->m_ObjExcelApplication(nullptr);
  Answers({"RETRY"});
  desktop.while_open = [this] { facade->m_ObjExcelApplication(application); };
  Open();
  EXPECT_EQ(Shown(), "Ticker,Bid,Tick");
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
}

}  // namespace
}  // namespace mirelo::testing
