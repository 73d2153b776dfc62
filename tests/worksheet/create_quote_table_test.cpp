// What Go writes on the quote table's sheet.

#include "automation/number.h"
#include "host/excel/comment.h"
#include "host/excel/interior.h"
#include "worksheet/go_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class QuoteTable : public GoTest {};

TEST_F(QuoteTable, HasACaptionHeadersAndTickers) {
  Columns("Ticker,Last,Change");
  EXPECT_EQ(Go({"MSFT", "IBM"}), 78);
  EXPECT_EQ(Text("A1"), "SnapShot( 60 sec)");
  EXPECT_THAT(Row("A2", 4), ElementsAre("Ticker", "Last", "Change", ""));
  EXPECT_THAT(Column("A3", 3), ElementsAre("MSFT", "IBM", ""));
  EXPECT_THAT(Row("B3", 3), ElementsAre("", "", ""));
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(QuoteTable, HasTheTickersInItsFirstColumnWhateverHeadsIt) {
  Columns("Last,Ticker");
  Save("VerticalTable", 0);
  Go({"MSFT"});
  EXPECT_THAT(Row("A2", 2), ElementsAre("Last", "Ticker"));
  EXPECT_THAT(Row("A3", 2), ElementsAre("MSFT", ""));
}

TEST_F(QuoteTable, HasTheTickersOfThePlainGrid) {
  Save("VerticalTable", 0);
  Go({"MSFT", "IBM"});
  EXPECT_THAT(Column("A3", 2), ElementsAre("MSFT", "IBM"));
  EXPECT_THAT(SheetNames(), ElementsAre("Dovanta2_Quotes", "Sheet1"));
}

// The status caption

TEST_F(QuoteTable, SaysInItsCaptionHowItIsUpdated) {
  const struct {
    const char* name;
    bool ticked;
    const char* seconds;
    const char* caption;
    std::int32_t result;
  } cases[] = {
      {"once", false, "15", "SnapShot( Update Onse )", 78},
      {"every so many seconds", true, "15", "SnapShot( 15 sec)", 78},
      {"by a stream", true, "0", "Streaming( CSWatch - Delayed )", 77},
      {"by a stream, a number in other words", true, "0.0", "Streaming( CSWatch - Delayed )", 77},
      {"in parts of seconds", true, "0.25", "SnapShot( 0.25 sec)", 78},
      {"as typed", true, " 15 ", "SnapShot(  15  sec)", 78},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(Go({"MSFT"},
                 [&](frmMirelo& form) {
                   form.AddListQuoteSource("CSWatch - Delayed");
                   form.chkUpdOrNot.Value(c.ticked ? 1 : 0);
                   if (!c.ticked) return;
                   // The box keeps the words of a number that its bar stands at.
                   form.txtSec.Text(NumberText(Val(c.seconds)));
                   form.txtSec.Text(c.seconds);
                   ASSERT_EQ(form.txtSec.Text(), c.seconds);
                 }),
              c.result);
    EXPECT_EQ(Text("A1"), c.caption);
  }
}

TEST_F(QuoteTable, HasItsQuoteSourceInTheCaptionWithoutBlanksAround) {
  Go({"MSFT"}, [](frmMirelo& form) {
    form.txtSec.Text("0");
    form.AddListQuoteSource("ADVFN - STREAMING RealTime (Subscription)");
    ASSERT_TRUE(form.ComQuoteSource.Text().starts_with(" "));
  });
  EXPECT_EQ(Text("A1"), "Streaming( ADVFN - STREAMING RealTime (Subscription) )");
}

TEST_F(QuoteTable, WritesNothingElseInTheCaptionsRow) {
  Go({"MSFT"});
  Cell("B1")->Value("mine");
  Cell("A1")->Interior()->ColorIndex(6);
  Go({"MSFT"});
  EXPECT_THAT(Row("A1", 4), ElementsAre("SnapShot( 60 sec)", "mine", "", ""));
  EXPECT_EQ(Cell("A1")->Interior()->ColorIndex(), Variant(6)) << "its look is the person's";
}

// The sheet

TEST_F(QuoteTable, GetsASheetOfItsOwnOnce) {
  Save("VerticalTable", 0);
  Go({"MSFT"});
  EXPECT_THAT(SheetNames(), ElementsAre("Dovanta2_Quotes", "Sheet1"));
  Go({"IBM"});
  EXPECT_THAT(SheetNames(), ElementsAre("Dovanta2_Quotes", "Sheet1"));
}

TEST_F(QuoteTable, TakesOverASheetOfItsName) {
  Sheets()->Item(1)->Name("Dovanta2_Quotes");
  Cell("A1")->Value("My notes");
  Cell("B9")->Value("far away");
  Go({"MSFT"});
  EXPECT_EQ(Text("A1"), "SnapShot( 60 sec)");
  EXPECT_EQ(Text("B9"), "far away");
}

TEST_F(QuoteTable, IsRefusedBesideASheetThatBearsItsNameInOtherCase) {
  Sheets()->Item(1)->Name("DOVANTA2_QUOTES");
  Excel().ScreenUpdating(true);
  Answers({"ABORT"});
  EXPECT_EQ(Go({"MSFT"}), 2);
  ASSERT_EQ(desktop.reports.size(), 1U);
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tError: 1004, "));
  EXPECT_THAT(desktop.reports[0].text,
              HasSubstr("\tin Mirelo.frmMirelo.save_settings_and_create_table at line 0"));
  EXPECT_FALSE(Excel().ScreenUpdating());
}

TEST_F(QuoteTable, IsBuiltOnceItsSheetCanBeNamed) {
  Sheets()->Item(1)->Name("DOVANTA2_QUOTES");
  Answers({"RETRY"});
  Mend([&] { Sheets()->Item("DOVANTA2_QUOTES")->Name("Other"); });
  EXPECT_EQ(Go({"MSFT"}), 78);
  EXPECT_EQ(desktop.reports.size(), 1U);
  EXPECT_THAT(SheetNames(), ElementsAre("Dovanta2_Quotes", "Other"));
  EXPECT_EQ(Text("A2"), "Ticker");
}

// The new sheet keeps its own name, and the table is asked for by a name whose case does not matter.
TEST_F(QuoteTable, IsBuiltOnTheSheetOfOtherCaseWhenTheRefusalIsIgnored) {
  Sheets()->Item(1)->Name("DOVANTA2_QUOTES");
  Save("VerticalTable", 0);
  Answers({"IGNORE"});
  EXPECT_EQ(Go({"MSFT"}), 78);
  EXPECT_THAT(SheetNames(), ElementsAre("Sheet2", "DOVANTA2_QUOTES"));
  EXPECT_EQ(Text("A2"), "Ticker");
}

TEST_F(QuoteTable, ComesToTheFrontWhenItsSheetIsMadeAndNotAgain) {
  Save("VerticalTable", 0);
  Go({"MSFT"});
  EXPECT_EQ(Excel().ActiveSheet()->Name(), "Dovanta2_Quotes");
  Sheets()->Item("Sheet1")->Select();
  Sheets()->Item("Sheet1")->Range("D7")->Select();
  Go({"IBM"});
  EXPECT_EQ(Excel().ActiveSheet()->Name(), "Sheet1");
  EXPECT_EQ(Excel().ActiveCell()->Address(), "$D$7");
}

// Without names there is no array of them.
TEST_F(QuoteTable, FailsWithoutColumns) {
  Answers({"ABORT"});
  EXPECT_EQ(Go({"MSFT"}, [](frmMirelo& form) { form.ListRight.Clear(); }), 2);
  EXPECT_THAT(ReportedErrors(), ElementsAre(13));
  EXPECT_EQ(Stored("Settings", "ListRight"), Variant(""));
  EXPECT_FALSE(Excel().ScreenUpdating());
}

TEST_F(QuoteTable, LeavesScreenUpdatingAsItWas) {
  for (const bool on : {true, false}) {
    Excel().ScreenUpdating(on);
    Go({"MSFT"});
    EXPECT_EQ(Excel().ScreenUpdating(), on);
  }
}

// Without tickers

TEST_F(QuoteTable, IsNotBuiltWithoutTickers) {
  Columns("Ticker,Last");
  Save("Seconds", 5);
  EXPECT_EQ(Go({}, [](frmMirelo& form) { form.txtSec.Text("7"); }), 2);
  EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{"Tickers list is empty.", 48, "Dovanta2"}));
  EXPECT_THAT(SheetNames(), ElementsAre("Sheet1"));
  EXPECT_EQ(Stored("Settings", "Seconds").ToText(), "7");
  EXPECT_TRUE(Stored("Settings", "ListLeft").IsEmpty());
  EXPECT_EQ(Stored("Settings", "ListRight"), Variant("Ticker,Last"));
}

TEST_F(QuoteTable, StaysAsItIsWithoutTickers) {
  Columns("Ticker,Last");
  Go({"A", "B"});
  Cell("B3")->Value(26.5);
  Cell("B3")->AddComment("note");
  Go({}, [](frmMirelo& form) { form.txtSec.Text("7"); });
  EXPECT_EQ(desktop.boxes.size(), 1U);
  EXPECT_EQ(Text("A1"), "SnapShot( 60 sec)");
  EXPECT_THAT(Column("A2", 4), ElementsAre("Ticker", "A", "B", ""));
  EXPECT_EQ(Text("B3"), "26.5");
  EXPECT_EQ(Cell("B3")->Comment()->Text(), "note");
}

TEST_F(QuoteTable, LeavesTheDialogUpWithoutTickers) {
  Show([&](frmMirelo& form) {
    form.ButGo.UserPress();
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(form.Tag(), "");
    // The message's exit leaves a name behind.
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo", "Mirelo.frmMirelo.ButGo_Click"));
  });
}

// Vertical tables

TEST_F(QuoteTable, BringsTheSheetsOfVerticalTablesWithTheirTicks) {
  Columns("Ticker,Last,Bid");
  Go({"A", "B", "C"}, [](frmMirelo& form) {
    form.FG.UserClickCell(1, 2);
    form.FG.TextMatrix(3, 3, "True");
    form.FG.TextMatrix(2, 3, "0");
  });
  EXPECT_THAT(SheetNames(),
              ElementsAre("Quotes_Vertical(C)", "Quotes_Vertical(A)", "Dovanta2_Quotes", "Sheet1"));
  EXPECT_EQ(Sheets()->Item("Quotes_Vertical(A)")->Range("A2")->Value(), Variant("Last"));
  EXPECT_EQ(Sheets()->Item("Quotes_Vertical(C)")->Range("A2")->Value(), Variant("Bid"));
}

// The column of charts is one of those that are walked.
TEST_F(QuoteTable, BringsASheetForATickerWhoseChartsAloneAreTicked) {
  Save("BuildCharts", 1);
  Columns("Ticker,Last,LastVolume");
  Go({"A", "B"}, [](frmMirelo& form) {
    form.FG.TextMatrix(1, form.FG.Cols() - 1, "-1");
    form.FG.TextMatrix(2, 1, "True");  // a ticker that reads like a tick is none
  });
  EXPECT_THAT(SheetNames(), ElementsAre("Quotes_Vertical(A)", "Dovanta2_Quotes", "Sheet1"));
}

TEST_F(QuoteTable, BringsNoVerticalSheetInPlainMode) {
  Save("VerticalTable", 0);
  Go({"A"}, [](frmMirelo& form) { form.FG.TextMatrix(1, 0, "-1"); });
  EXPECT_THAT(SheetNames(), ElementsAre("Dovanta2_Quotes", "Sheet1"));
}

// And back

TEST_F(QuoteTable, FillsTheNextDialog) {
  Columns("Ticker,Last,Bid,Tick");
  Go({"MSFT", "IBM"}, [](frmMirelo& form) {
    form.txtSec.Text("15");
    form.FG.UserClickCell(2, 3);
  });
  Columns("Ticker,Open");
  Save("Seconds", 60);
  Show([&](frmMirelo& form) {
    EXPECT_THAT(form.ListRight.Items(), ElementsAre("Ticker", "Last", "Bid", "Tick"));
    EXPECT_EQ(form.txtSec.Text(), "15");
    ASSERT_EQ(form.FG.Rows(), 3);
    EXPECT_EQ(form.FG.TextMatrix(1, 1), "MSFT");
    EXPECT_EQ(form.FG.TextMatrix(2, 1), "IBM");
    EXPECT_EQ(form.FG.TextMatrix(1, 3), "");
    EXPECT_EQ(form.FG.TextMatrix(2, 3), "-1");
  });
}

}  // namespace
}  // namespace mirelo::testing
