// The ticks that the grid takes from the vertical sheets.

#include "worksheet/vertical_sheets_fixture.h"

namespace mirelo::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class VerticalTicks : public VerticalSheetsTest {
 protected:
  ~VerticalTicks() override {
    EXPECT_THAT(CallStack(), IsEmpty());
    EXPECT_THAT(desktop.reports, IsEmpty());
  }

  // A sheet of the ticker A with these headers. A "*" behind one stands for the mark of charts on it.
  void PutSheet(const Texts& headers) {
    Sheets()->Add()->Name("Quotes_Vertical(A)");
    std::int32_t col = 0;
    for (std::string header : headers) {
      const auto cell = Cell("A2")->Cells(1, ++col);
      if (header.ends_with('*')) {
        header.pop_back();
        cell->AddComment(kCharts);
      }
      cell->Value(header);
    }
  }
  std::string ReadTicks(const Texts& headers) {
    PutSheet(headers);
    form.ChkFGVerticalTables();
    return Ticks(1);
  }
};

TEST_F(VerticalTicks, AreTheHeadersOfTheTickersSheetWhateverTheirCaseAndOrder) {
  Open("Last,Bid,Ask", {"A", "B"});
  SetTicks(2, "-x.");
  EXPECT_EQ(ReadTicks({"ASK", "Last"}), "x.x");
  EXPECT_EQ(Ticks(2), "-x.");
}

TEST_F(VerticalTicks, AreAddedToThoseThatAreThere) {
  Open("Last,Bid,Ask", {"A"});
  SetTicks(1, "-x-");
  EXPECT_EQ(ReadTicks({"Last"}), "xx-");
}

TEST_F(VerticalTicks, LeaveOutHeadersThatTheGridDoesNotHave) {
  Open("Last,Bid", {"A"});
  EXPECT_EQ(ReadTicks({"Open", "Bid", "Profit"}), ".x");
}

TEST_F(VerticalTicks, EndAtAGapInTheHeaders) {
  Open("Last,Bid,Ask", {"A"});
  EXPECT_EQ(ReadTicks({"Last", "Bid", "", "Ask"}), "xx.");
}

TEST_F(VerticalTicks, AreNoneOfAnEmptySheet) {
  Open("Last,Bid", {"A"});
  EXPECT_EQ(ReadTicks({}), "..");
}

TEST_F(VerticalTicks, AreReadWithoutTheSetUpMark) {
  Open("Last,Bid", {"A"});
  PutSheet({"Bid"});
  Cell("A1")->Value("something else");
  form.ChkFGVerticalTables();
  EXPECT_EQ(Ticks(1), ".x");
}

TEST_F(VerticalTicks, TakeATickersHeaderForAFieldToo) {
  Open("Last", {"A"});
  EXPECT_EQ(ReadTicks({"Ticker", "Last"}), "x");
  EXPECT_THAT(Tickers(), ElementsAre("-1"));
}

TEST_F(VerticalTicks, AreSkippedWithoutASpreadsheet) {
  Open("Last", {"A"});
  facade->m_ObjExcelApplication(nullptr);
  form.ChkFGVerticalTables();
  EXPECT_EQ(Ticks(1), ".");
}

TEST_F(VerticalTicks, AreReadWhenTheDialogOpens) {
  const auto table = Sheets()->Item(1);
  table->Name("Dovanta2_Quotes");
  table->Range("A2")->Value("Ticker");
  table->Range("B2")->Value("Last");
  table->Range("C2")->Value("Bid");
  table->Range("A3")->Value("A");
  PutSheet({"Bid"});
  Open("", {});
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "Bid"));
  EXPECT_EQ(Ticks(1), ".x");
}

TEST_F(VerticalTicks, AreReadWhenVerticalTablesAreTurnedOnAgain) {
  OpenWithCharts("Last,LastVolume,Bid", {"A", "B"});
  MakeAndSetUp("xx-x");
  form.chkVerTable.UserClick();
  EXPECT_THAT(Headers(), ElementsAre("Ticker"));
  form.chkVerTable.UserClick();
  EXPECT_THAT(AllTicks(), ElementsAre("xx.x", "...."));
  EXPECT_THAT(Pictures(LastColumn()), Each("chart"));
}

TEST_F(VerticalTicks, AreNotReadInPlainMode) {
  Save("VerticalTable", 0);
  PutSheet({"Ticker", "Last"});
  Open("Last", {"A"});
  EXPECT_THAT(Tickers(), ElementsAre("A"));
}

// Charts. A mark is seen from the header on its left only.

TEST_F(VerticalTicks, OfChartsAreFoundByTheMarkOfTheSecondField) {
  struct Case {
    const char* name;
    Texts headers;
    const char* ticks;  // of Last, LastVolume, Bid and charts
  };
  const std::vector<Case> cases{
      {"both", {"Last*", "LastVolume*"}, "xx.x"},
      {"in the other order", {"LastVolume*", "Last*"}, "xx.x"},
      {"on the second only", {"Last", "LastVolume*"}, "xx.x"},
      {"on the first only", {"Last*", "LastVolume"}, "xx.."},
      {"on a field alone", {"Last*"}, "x..."},
      {"behind another field", {"Bid", "Last*"}, "x.xx"},
      {"behind an unknown header", {"Open", "Last*"}, "x..."},
      {"on another field", {"Last", "Bid*"}, "x.xx"},
      {"no mark", {"Last", "LastVolume"}, "xx.."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    OpenWithCharts("Last,LastVolume,Bid", {"A"});
    EXPECT_EQ(ReadTicks(c.headers), c.ticks);
    Sheets()->Item("Quotes_Vertical(A)")->Name(c.name);
  }
}

TEST_F(VerticalTicks, OfChartsNeedTheirText) {
  OpenWithCharts("Last,LastVolume", {"A"});
  PutSheet({"Last", "LastVolume"});
  Cell("B2")->AddComment("CHARTS (last & volume)");
  form.ChkFGVerticalTables();
  EXPECT_EQ(Ticks(1), "xxx");
  Cell("B2")->ClearComments();
  Cell("B2")->AddComment("note");
  SetTicks(1, "...");
  form.ChkFGVerticalTables();
  EXPECT_EQ(Ticks(1), "xx.");
}

TEST_F(VerticalTicks, OfChartsAreNoneWhileChartsAreOff) {
  Open("Last,LastVolume", {"A"});
  EXPECT_EQ(ReadTicks({"Last*", "LastVolume*"}), "xx");
}

TEST_F(VerticalTicks, ComeWithThePicturesOfChartsForEveryTicker) {
  OpenWithCharts("Last", {"A", "B"});
  for (const std::int32_t row : {1, 2}) FG.Cell(forms::Grid::kCellPicture, row, LastColumn(), "");
  form.ChkFGVerticalTables();
  EXPECT_THAT(Pictures(LastColumn()), Each("chart"));
}

// GivComment

TEST_F(VerticalTicks, GetTheTextOfACommentAndNothingWithoutOne) {
  PutSheet({"Last*", "Bid"});
  const auto sheet = Sheets()->Item("Quotes_Vertical(A)");
  Open("Last", {});
  EXPECT_EQ(frmMirelo::GivComment(*sheet, "A2"), kCharts);
  EXPECT_EQ(frmMirelo::GivComment(*sheet, "B2"), "");
  EXPECT_EQ(frmMirelo::GivComment(*sheet, "no cell"), "");
}

}  // namespace
}  // namespace mirelo::testing
