// What Go writes on the quote table's sheet.

#include "automation/number.h"
#include "host/excel/comment.h"
#include "host/excel/interior.h"
#include "support/logging_registry.h"
#include "worksheet/conditions_of.h"
#include "worksheet/go_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class QuoteTable : public GoTest {
 protected:
  // The texts of the two lists, as stored.
  Texts StoredLists() {
    return {Stored("Settings", "ListLeft").ToText(), Stored("Settings", "ListRight").ToText()};
  }
};

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

// The lists

TEST_F(QuoteTable, StoresTheListsOfColumns) {
  Save("ListLeft", "Open,Tick");
  Columns("Ticker,Bid,Last");
  Go({"MSFT"}, [](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kFields);
    form.ListRight.UserSelect(2);
    form.ButUp.Enabled(true);
    form.ListLeft.UserDoubleClick(0);
  });
  EXPECT_THAT(StoredLists(), ElementsAre("Tick", "Ticker,Bid,Last,Open"));
}

TEST_F(QuoteTable, StoresTheListsBehindAllOtherSettings) {
  LoggingRegistry log(registry);
  host.Use(log);
  Go({"MSFT"});
  host.Use(registry);
  Texts names;
  for (const auto& write : log.writes) {
    if (write.section == "Settings") names.push_back(write.name);
  }
  ASSERT_GE(names.size(), 3U);
  EXPECT_THAT(Texts(names.end() - 3, names.end()),
              ElementsAre("DisplacementMinute", "ListLeft", "ListRight"));
}

// Settings that cannot be stored are passed over in silence, but not the lists.

TEST_F(QuoteTable, ReportsThatItsListsCannotBeStoredAndIsBuiltAllTheSame) {
  tracker.on_request = [&](const std::string&) { registry.FailAlways("RegSetValueExA"); };
  Answers({"IGNORE", "IGNORE"});
  EXPECT_EQ(Go({"MSFT"}), 78);
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmMirelo.save_settings_and_create_table",
                                              "Mirelo.frmMirelo.save_settings_and_create_table"));
  EXPECT_EQ(Text("A2"), "Ticker");
  EXPECT_THAT(StoredLists(), ElementsAre("", ""));
}

TEST_F(QuoteTable, StoresItsListsOnceTheyCanBe) {
  Columns("Ticker,Last");
  tracker.on_request = [&](const std::string&) { registry.FailAlways("RegSetValueExA"); };
  Answers({"RETRY"});
  Mend([&] { registry.Fail("RegSetValueExA", 1000); });
  EXPECT_EQ(Go({"MSFT"}), 78);
  EXPECT_EQ(desktop.reports.size(), 1U);
  EXPECT_EQ(StoredLists().back(), "Ticker,Last");
}

TEST_F(QuoteTable, IsNotBegunWhenStoringItsListsIsAborted) {
  tracker.on_request = [&](const std::string&) { registry.FailAlways("RegSetValueExA"); };
  Answers({"ABORT"});
  EXPECT_EQ(Go({"MSFT"}), 2);
  EXPECT_THAT(SheetNames(), ElementsAre("Sheet1"));
  EXPECT_TRUE(Excel().ScreenUpdating());
}

TEST_F(QuoteTable, StoresAnEmptyListAsAnEmptyText) {
  Save("ListLeft", "Open");
  Columns("Ticker,Bid");
  Go({"MSFT"}, [](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kFields);
    form.ListLeft.UserDoubleClick(0);
  });
  EXPECT_THAT(StoredLists(), ElementsAre("", "Ticker,Bid,Open"));
}

// An old table

TEST_F(QuoteTable, LosesTheColumnsThatItHadBefore) {
  Columns("Ticker,Last,Change,Bid,Ask,Date,Time");
  Go({"MSFT"});
  Cell("G3")->Value("an old quote");
  Go({"MSFT"}, [](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kFields);
    for (int i = 0; i < 4; ++i) form.ListRight.UserDoubleClick(3);
  });
  EXPECT_THAT(Row("A2", 7), ElementsAre("Ticker", "Last", "Change", "", "", "", ""));
  EXPECT_EQ(Text("G3"), "");
  EXPECT_EQ(Cell("G3")->NumberFormat(), Variant("General"));
}

TEST_F(QuoteTable, CountsOnlyTheColumnsThatTheDialogKnewOfAnOldOne) {
  Sheets()->Item(1)->Name("Dovanta2_Quotes");
  for (const auto& [cell, text] : std::initializer_list<std::pair<const char*, const char*>>{{"A2", "Ticker"},
                                                                                             {"B2", "Last"},
                                                                                             {"C2", "Profit"},
                                                                                             {"D2", "last"},
                                                                                             {"E2", "Mine"},
                                                                                             {"A3", "MSFT"}})
    Cell(cell)->Value(text);
  Go({"MSFT"});
  // Three headers were known, the repeated one among them; two columns are left.
  EXPECT_THAT(Row("A2", 5), ElementsAre("Ticker", "Last", "", "last", "Mine"));
}

TEST_F(QuoteTable, KeepsTheColumnsOfAnOldOneThatTheDialogDidNotRead) {
  Columns("Ticker,Last");
  Sheets()->Item(1)->Name("Dovanta2_Quotes");
  for (const char* cell : {"A2", "B2", "C2", "D2"}) Cell(cell)->Value("Bid");  // and no ticker below
  Go({"MSFT"});
  EXPECT_THAT(Row("A2", 5), ElementsAre("Ticker", "Last", "Bid", "Bid", ""));
}

TEST_F(QuoteTable, LosesOneBlockOfRowsBelowIt) {
  Go({"A", "B", "C", "D", "E"});
  Go({"X", "Y", "Z"});
  // The table ends at row 5; row 6 went, and the old row 7 moved up.
  EXPECT_THAT(Column("A3", 6), ElementsAre("X", "Y", "Z", "E", "", ""));
}

TEST_F(QuoteTable, LosesTheRowsDownToTheNextFilledCell) {
  Go({"A"});
  Cell("A9")->Value("far");
  Cell("B7")->Value("between");
  Go({"A"});
  EXPECT_THAT(Column("A3", 6), ElementsAre("A", "", "", "", "", ""));
  EXPECT_EQ(Text("B7"), "");
}

TEST_F(QuoteTable, LosesNoRowsDownToTheLastButOneOfTheSheet) {
  Go({"A"});
  const std::int32_t limit = Cell("A1")->Worksheet()->Rows()->Count() - 1;
  const auto below = [&](std::int32_t row) { return Cell("A1")->Cells(row, 1); };
  Cell("B7")->Value("between");
  below(limit)->Value("far");
  Go({"A"});
  EXPECT_EQ(Text("B7"), "between");
  EXPECT_EQ(below(limit)->Value(), Variant("far"));

  below(limit - 1)->Value("not so far");
  Go({"A"});
  EXPECT_EQ(Text("B7"), "");
  EXPECT_TRUE(below(limit - 1)->Value().IsEmpty());
  EXPECT_EQ(below(4)->Value(), Variant("far")) << "the cells below moved up";
}

TEST_F(QuoteTable, LeavesAColumnThatIsEmptyBelowIt) {
  Sheets()->Item(1)->Name("Dovanta2_Quotes");
  Cell("C20")->Value("note");
  Go({"A"});
  EXPECT_EQ(Text("C20"), "note");
}

TEST_F(QuoteTable, LosesFormatsValuesAndCommentsThatWereInIt) {
  Columns("Ticker,Last,Tick");
  Go({"A", "B"});
  Cell("B3")->Value(26.5);
  Cell("B4")->NumberFormat("@");
  Cell("C4")->NumberFormat("@");
  for (const char* cell : {"A2", "C4"}) Cell(cell)->AddComment("note");
  Cell("C3")->FormatConditions()->Add(host::excel::xlCellValue, host::excel::xlEqual, "1");
  Go({"A", "B"});
  EXPECT_EQ(Text("B3"), "");
  EXPECT_EQ(Cell("B4")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(Cell("C4")->NumberFormat(), Variant("General"));
  EXPECT_EQ(Cell("A2")->Comment(), nullptr);
  EXPECT_EQ(Cell("C4")->Comment(), nullptr);
  EXPECT_THAT(ConditionsOf(*Cell("A2:C4")), IsEmpty());
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
