// The sheets of vertical tables, as they are made and set up.

#include "host/excel/border.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/shape.h"
#include "worksheet/conditions_of.h"
#include "worksheet/vertical_sheets_fixture.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class VerticalSheets : public VerticalSheetsTest {
 protected:
  ~VerticalSheets() override {
    EXPECT_THAT(CallStack(), IsEmpty());
    EXPECT_THAT(desktop.reports, IsEmpty());
  }
};

// Making

TEST_F(VerticalSheets, AreMadeForEachTickerThatHasNone) {
  Open("Last", {});
  form.AddSheetsVerticalTables("MSFT,IBM");
  EXPECT_THAT(SheetNames(), ElementsAre("Quotes_Vertical(IBM)", "Quotes_Vertical(MSFT)", "Sheet1"));
  form.AddSheetsVerticalTables("IBM,GE");
  EXPECT_THAT(SheetNames(),
              ElementsAre("Quotes_Vertical(GE)", "Quotes_Vertical(IBM)", "Quotes_Vertical(MSFT)", "Sheet1"));
}

TEST_F(VerticalSheets, StayAsTheyAreWhenTheyAreThere) {
  Open("Last", {});
  Sheets()->Item(1)->Name("QUOTES_VERTICAL(msft)");
  Sheets()->Item(1)->Range("B7")->Value("history");
  form.AddSheetsVerticalTables("MSFT");
  EXPECT_THAT(SheetNames(), ElementsAre("QUOTES_VERTICAL(msft)"));
  EXPECT_EQ(Sheets()->Item(1)->Range("B7")->Value(), Variant("history"));
}

TEST_F(VerticalSheets, BearTheNameThatTheUserChose) {
  Save("txtVerticalSheet", " My history ");
  Open("Last", {});
  form.AddSheetsVerticalTables("MSFT");
  EXPECT_THAT(SheetNames(), ElementsAre("My history(MSFT)", "Sheet1"));
}

TEST_F(VerticalSheets, AreLeftUnnamedWithoutAWordWhenTheNameIsRefused) {
  Open("Last", {});
  form.AddSheetsVerticalTables("A/B,IBM");
  EXPECT_THAT(SheetNames(), ElementsAre("Quotes_Vertical(IBM)", "Sheet2", "Sheet1"));
}

TEST_F(VerticalSheets, AreNoneOfAnEmptyList) {
  Open("Last", {});
  form.AddSheetsVerticalTables("");
  EXPECT_THAT(SheetNames(), ElementsAre("Sheet1"));
}

TEST_F(VerticalSheets, AreSkippedWithoutASpreadsheet) {
  Open("Last", {"A"});
  SetTicks(1, "x");
  form.AddSheetsVerticalTables("A");
  facade->m_ObjExcelApplication(nullptr);
  form.AddSheetsVerticalTables("A,B");
  form.AddForSheetsVerticalTables("A", "1", kBlue);
  EXPECT_THAT(SheetNames(), ElementsAre("Quotes_Vertical(A)", "Sheet1")) << "none is made";
  EXPECT_EQ(Text("A1") + Text("B1") + Text("A2"), "") << "and the one that is there is not set up";
}

TEST_F(VerticalSheets, AreSkippedWhereTheyAreMissing) {
  OpenWithCharts("Last,LastVolume", {"A", "B"});
  SetAllTicks({"xxx", "x-x"});
  form.AddSheetsVerticalTables("B");
  form.AddForSheetsVerticalTables("A,B", "1,2", kBlue);
  EXPECT_THAT(SheetNames(), ElementsAre("Quotes_Vertical(B)", "Sheet1"));
  const auto sheet = Sheets()->Item("Quotes_Vertical(B)");
  EXPECT_EQ(sheet->Range("B1")->Value(), Variant("B"));
  EXPECT_TRUE(sheet->Range("B2")->Value().IsEmpty());
}

// Setting up

TEST_F(VerticalSheets, SayWhoseTheyAreAndHeadTheTickedFields) {
  Open("Last,Bid,Ask,Date", {"A"});
  MakeAndSetUp("x.x-");
  EXPECT_EQ(Text("A1"), "Ticker:");
  EXPECT_EQ(Text("B1"), "A");
  EXPECT_THAT(FirstHeaders(4), ElementsAre("Last", "Ask", "", ""));
}

TEST_F(VerticalSheets, TakeTheOtherFormOfATickAsWell) {
  Open("Last,Bid", {"A"});
  FG.TextMatrix(1, 3, "True");
  MakeAndSetUp("");
  EXPECT_THAT(FirstHeaders(4), ElementsAre("Bid", "", "", ""));
}

TEST_F(VerticalSheets, GoByTheRowsThatTheListNames) {
  Open("Last,Bid", {"A", "B", "C"});
  SetAllTicks({"x.", "..", ".x"});
  form.AddSheetsVerticalTables("A,C");
  form.AddForSheetsVerticalTables("A,C", "1,3", kBlue);
  EXPECT_THAT(FirstHeaders(4), ElementsAre("Last", "", "", ""));
  EXPECT_EQ(Sheets()->Item("Quotes_Vertical(C)")->Range("A2")->Value(), Variant("Bid"));
  EXPECT_EQ(Sheets()->Item("Quotes_Vertical(C)")->Range("B1")->Value(), Variant("C"));
}

TEST_F(VerticalSheets, WithoutTheSetUpMarkAreSetUpAndNotCleared) {
  Open("Last,Bid", {"A"});
  Sheets()->Item(1)->Name("Quotes_Vertical(A)");
  Cell("A2")->Value("Old");
  Cell("C2")->Value("Open");
  Cell("B7")->Value("history");
  MakeAndSetUp("xx");
  EXPECT_THAT(FirstHeaders(4), ElementsAre("Last", "Bid", "Open", ""));
  EXPECT_EQ(Text("B7"), "history");
  EXPECT_EQ(Text("A1"), "Ticker:");
}

// Which ticks of Last, Bid and Ask change what a sheet that is set up has.
TEST_F(VerticalSheets, KeepTheirHistoryAsLongAsTheirHeadersBeginWithTheFields) {
  struct Case {
    const char* name;
    const char* before;
    const char* after;
    Texts headers;
    const char* history;  // what is left in A3 and C9
  };
  const std::vector<Case> cases{
      {"the same ticks", "xx-", "xx-", {"Last", "Bid", "", ""}, "26.5 27.5"},
      {"a tick at the end goes", "xxx", "xx-", {"Last", "Bid", "Ask", ""}, "26.5 27.5"},
      {"a tick at the end comes", "xx-", "xxx", {"Last", "Bid", "Ask", ""}, " "},
      {"one in the middle goes", "xxx", "x-x", {"Last", "Ask", "Ask", ""}, " 27.5"},
      // Cleared as wide as the new fields are: the third column is not theirs.
      {"the first goes", "xxx", "-xx", {"Bid", "Ask", "Ask", ""}, " 27.5"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Open("Last,Bid,Ask", {"A"});
    MakeAndSetUp(c.before);
    Cell("A3")->Value(26.5);
    Cell("C9")->Value(27.5);
    MakeAndSetUp(c.after);
    EXPECT_EQ(FirstHeaders(4), c.headers);
    EXPECT_EQ(Text("A3") + " " + Text("C9"), c.history);
    EXPECT_EQ(Text("A1") + Text("B1"), "Ticker:A");
    Sheets()->Item("Quotes_Vertical(A)")->Name(c.name);
  }
}

TEST_F(VerticalSheets, AreKnownByMarkAndHeadersInAnyCaseAndStayAsSpelt) {
  Open("Last,Bid", {"A"});
  MakeAndSetUp("xx");
  Cell("A1")->Value("TICKER:");
  Cell("B1")->Value("somebody else");
  Cell("A2")->Value("LAST");
  Cell("A3")->Value(26.5);
  MakeAndSetUp("xx");
  EXPECT_THAT(FirstHeaders(4), ElementsAre("LAST", "Bid", "", ""));
  EXPECT_EQ(Text("A3"), "26.5");
  EXPECT_EQ(Text("B1"), "somebody else");
}

// Conditions make no cell used, so that they tell how far the clearing reaches.
TEST_F(VerticalSheets, AreClearedInOneRowBelowTheirLastOne) {
  Save("RowsLimit", 1);
  Open("Last,Bid", {"A"});
  MakeAndSetUp("x-");
  Cell("A9")->Value(1);
  Cell("A8:B12")->FormatConditions()->Add(xlCellValue, xlGreater, "5");
  MakeAndSetUp("-x");
  EXPECT_EQ(Text("A9"), "");
  for (const char* cleared : {"A9", "A10"}) EXPECT_THAT(ConditionsOf(*Cell(cleared)), IsEmpty()) << cleared;
  for (const char* left : {"A11", "B8"}) EXPECT_EQ(ConditionsOf(*Cell(left)).size(), 1U) << left;
}

// The chart mark

TEST_F(VerticalSheets, BearTheChartMarkOnBothFieldsOfCharts) {
  OpenWithCharts("Last,Bid,LastVolume", {"A"});
  MakeAndSetUp("xxxx");
  EXPECT_THAT(FirstHeaders(4), ElementsAre("Last", "Bid", "LastVolume", ""));
  EXPECT_EQ(Mark("A2"), kCharts);
  EXPECT_EQ(Mark("B2"), "");
  EXPECT_EQ(Mark("C2"), kCharts);
}

TEST_F(VerticalSheets, HaveAMarkThatIsFlatAndWide) {
  OpenWithCharts("Last", {"A"});
  MakeAndSetUp("x.");
  const auto untouched = Cell("F9")->AddComment("note")->Shape();
  MakeAndSetUp("xx");
  const auto shape = Cell("A2")->Comment()->Shape();
  EXPECT_NEAR(shape->Height(), untouched->Height() * 0.43, 0.75);
  EXPECT_NEAR(shape->Width(), untouched->Width() * 1.48, 0.75);
}

TEST_F(VerticalSheets, LoseTheMarkWhenTheirChartsGo) {
  OpenWithCharts("Last,LastVolume", {"A"});
  MakeAndSetUp("xxx");
  MakeAndSetUp("xx-");
  EXPECT_EQ(Mark("A2"), "");
  EXPECT_EQ(Mark("B2"), "");
}

TEST_F(VerticalSheets, BearNoMarkWithoutAFieldOfCharts) {
  OpenWithCharts("Bid,Ask", {"A"});
  MakeAndSetUp("xxx");
  EXPECT_EQ(Mark("A2"), "");
  EXPECT_EQ(Mark("B2"), "");
}

TEST_F(VerticalSheets, BearTheMarkAgainAfterTheirFieldsChanged) {
  OpenWithCharts("Bid,Last,LastVolume", {"A"});
  MakeAndSetUp("-xxx");
  MakeAndSetUp("xxxx");
  EXPECT_EQ(Mark("A2"), "");
  EXPECT_EQ(Mark("B2"), kCharts);
  EXPECT_EQ(Mark("C2"), kCharts);
}

TEST_F(VerticalSheets, TakeTheLastColumnForThatOfCharts) {
  Open("Last,Bid", {"A"});
  MakeAndSetUp("xx");
  EXPECT_EQ(Mark("A2"), kCharts);
}

TEST_F(VerticalSheets, KeepAnotherCommentOnAnotherField) {
  Open("Last,Bid", {"A"});
  MakeAndSetUp("x.");
  Cell("B2")->AddComment("note");
  MakeAndSetUp("x-");
  EXPECT_EQ(Mark("B2"), "note");
}

// Formats

TEST_F(VerticalSheets, FormatTheirHistoryByField) {
  Save("txtDecimalPlaces", 3);
  const struct {
    const char* field;
    const char* format;
    std::int32_t alignment;
  } cases[] = {{"Last", "0.000", xlHAlignGeneral},
               {"Bid", "0.000", xlHAlignGeneral},
               {"Ask", "0.000", xlHAlignGeneral},
               {"High", "0.000", xlHAlignGeneral},
               {"Low", "0.000", xlHAlignGeneral},
               {"Open", "0.000", xlHAlignGeneral},
               {"Volume", "#,##0", xlHAlignGeneral},
               {"BidSize", "#,##0", xlHAlignGeneral},
               {"AskSize", "#,##0", xlHAlignGeneral},
               {"LastVolume", "#,##0", xlHAlignGeneral},
               {"AvgTrade", "#,##0", xlHAlignGeneral},
               {"NumTrades", "#,##0", xlHAlignGeneral},
               {"Date", "mm/dd/yyyy", xlHAlignCenter},
               {"Time", "hh:mm:ss", xlHAlignCenter},
               {"Change", "+ 0.000;- 0.000", xlHAlignCenter}};
  std::string fields;
  for (const auto& c : cases) fields += (fields.empty() ? "" : ",") + std::string(c.field);
  Open(fields, {"A"});
  MakeAndSetUp(std::string(std::size(cases), 'x'));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(cases[i].field);
    const auto cell = Cell("A3")->Cells(1, static_cast<std::int32_t>(i) + 1);
    EXPECT_EQ(cell->NumberFormat(), Variant(cases[i].format));
    EXPECT_EQ(cell->HorizontalAlignment(), Variant(cases[i].alignment));
    EXPECT_EQ(ConditionsOf(*cell), cases[i].field == std::string("Change") ? kRisesAndFalls : Texts());
  }
  EXPECT_EQ(Cell("A2")->NumberFormat(), Variant("General"));
  EXPECT_EQ(Cell("P3")->NumberFormat(), Variant("General"));
}

TEST_F(VerticalSheets, FormatNoFieldThatIsSpeltInAnotherCase) {
  Open("LAST,change", {"A"});
  MakeAndSetUp("xx");
  EXPECT_EQ(Cell("A3:B3")->NumberFormat(), Variant("General"));
  EXPECT_THAT(ConditionsOf(*Cell("A3:B3")), IsEmpty());
}

TEST_F(VerticalSheets, ColourChangesByTwoConditionsHoweverOftenTheyAreSetUp) {
  Open("Change", {"A"});
  for (int i = 0; i < 3; ++i) MakeAndSetUp("x");
  EXPECT_EQ(ConditionsOf(*Cell("A3:A36002")), kRisesAndFalls);
}

TEST_F(VerticalSheets, FormatAsManyRowsAsTheLimitSays) {
  const struct {
    const char* name;
    bool limited;
    const char* limit;
    std::int32_t last_row;
  } cases[] = {{"no limit", false, "100", 36002},
               {"a limit", true, "100", 102},
               {"no rows", true, "0", 22},
               {"one row", true, "1", 3}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Sheets()->Item(1)->Range("A1:C1")->EntireColumn()->Clear();
    Open("Last", {"A"});
    if (form.chkLimitRows.Value() != (c.limited ? 1 : 0)) form.chkLimitRows.UserClick();
    form.txtRows.Text(c.limit);
    MakeAndSetUp("x");
    EXPECT_EQ(Cell("A1")->Cells(c.last_row, 1)->NumberFormat(), Variant("0.00"));
    EXPECT_EQ(Cell("A1")->Cells(c.last_row + 1, 1)->NumberFormat(), Variant("General"));
  }
}

TEST_F(VerticalSheets, ColourTheirHeadersInTheStyleOfTheTable) {
  Open("Last,Bid,Ask", {"A"});
  MakeAndSetUp("x-x");
  Cell("A2:B2")->HorizontalAlignment(xlHAlignCenter);
  MakeAndSetUp("x-x");
  for (const char* header : {"A2", "B2"}) {
    SCOPED_TRACE(header);
    EXPECT_EQ(Cell(header)->Font()->ColorIndex(), Variant(2));
    EXPECT_EQ(Cell(header)->Interior()->ColorIndex(), Variant(47));
    EXPECT_EQ(Cell(header)->Font()->Bold(), Variant(true));
    EXPECT_EQ(Cell(header)->HorizontalAlignment(), Variant(std::int32_t{xlHAlignGeneral}));
    for (const auto edge : {xlEdgeLeft, xlEdgeTop, xlEdgeBottom, xlEdgeRight}) {
      const auto border = Cell(header)->Borders(edge);
      EXPECT_EQ(border->LineStyle(), Variant(std::int32_t{xlContinuous}));
      EXPECT_EQ(border->Weight(), Variant(std::int32_t{xlThin}));
      EXPECT_EQ(border->ColorIndex(), Variant(15));
    }
  }
  EXPECT_EQ(Cell("C2")->Interior()->ColorIndex(), Variant(std::int32_t{xlColorIndexNone}));
  EXPECT_EQ(Cell("A3")->Interior()->ColorIndex(), Variant(std::int32_t{xlColorIndexNone}));
}

TEST_F(VerticalSheets, LeaveTheirHeadersPlainWithoutAStyle) {
  Save("Style", "None");
  Open("Last", {"A"});
  MakeAndSetUp("x");
  EXPECT_EQ(Cell("A2")->Font()->Bold(), Variant(false));
  EXPECT_EQ(Cell("A2")->Interior()->ColorIndex(), Variant(std::int32_t{xlColorIndexNone}));
  EXPECT_EQ(Cell("A3")->NumberFormat(), Variant("0.00"));
}

TEST_F(VerticalSheets, WithChartsAloneAreOnlyNamed) {
  OpenWithCharts("Last,LastVolume", {"A"});
  MakeAndSetUp("..x");
  EXPECT_EQ(Text("A1"), "Ticker:");
  EXPECT_THAT(FirstHeaders(4), ElementsAre("", "", "", ""));
  EXPECT_EQ(Mark("A2"), "");
}

}  // namespace
}  // namespace mirelo::testing
