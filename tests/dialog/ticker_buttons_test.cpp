#include "dialog/grid_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const int kSavingFailed = ErrorNumber(0x80044281);

class TickerButtons : public PlainGridTest {
 protected:
  TickerButtons() { form.txtTicker.SetFocus(); }

  void ExpectGridHasFocus() {
    EXPECT_TRUE(FG.HasFocus());
    EXPECT_THAT(CallStack(), IsEmpty());
  }
};

// Delete

TEST_F(TickerButtons, DeleteTakesTheActiveRowAndSelectsTheOneAbove) {
  Add({"A", "B", "C"});
  ClickTicker(2);
  form.ButDel.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("A", "C"));
  EXPECT_EQ(ActiveTicker(), "A");
  ExpectGridHasFocus();
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(TickerButtons, DeleteOfTheFirstRowSelectsNoOtherCell) {
  Add({"A", "B", "C"});
  FG.Select(1, 0, 3, 0);
  form.ButDel.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("B", "C"));
  EXPECT_EQ(FG.Row(), 1);
  EXPECT_EQ(FG.RowSel(), 2);  // still several: a selection would have collapsed it
  ExpectGridHasFocus();
}

TEST_F(TickerButtons, DeleteOfTheOnlyRowLeavesTheHeader) {
  Add({"A"});
  form.ButDel.UserPress();
  EXPECT_THAT(Tickers(), IsEmpty());
  EXPECT_THAT(Headers(), ElementsAre("Ticker"));
  ExpectGridHasFocus();
}

TEST_F(TickerButtons, DeleteWithoutTickersOnlyGivesTheGridTheFocus) {
  form.ButDel.UserPress();
  EXPECT_EQ(FG.Rows(), 1);
  ExpectGridHasFocus();
}

// Up and down

TEST_F(TickerButtons, UpSwapsTheRowWithTheOneAboveAndFollowsIt) {
  Add({"A", "B", "C"});
  form.ButTickerUp.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("A", "C", "B"));
  EXPECT_EQ(ActiveTicker(), "C");
  form.ButTickerUp.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("C", "A", "B"));
  ExpectGridHasFocus();
}

TEST_F(TickerButtons, UpOnTheFirstRowChangesNothing) {
  Add({"A", "B"});
  ClickTicker(1);
  form.txtTicker.SetFocus();
  form.ButTickerUp.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("A", "B"));
  EXPECT_EQ(FG.Row(), 1);
  ExpectGridHasFocus();
}

TEST_F(TickerButtons, DownSwapsTheRowWithTheOneBelowAndFollowsIt) {
  Add({"A", "B", "C"});
  ClickTicker(1);
  form.ButTickerDown.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("B", "A", "C"));
  EXPECT_EQ(ActiveTicker(), "A");
  form.ButTickerDown.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("B", "C", "A"));
  ExpectGridHasFocus();
}

TEST_F(TickerButtons, DownOnTheLastRowChangesNothing) {
  Add({"A", "B"});
  form.ButTickerDown.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("A", "B"));
  EXPECT_EQ(FG.Row(), 2);
  ExpectGridHasFocus();
}

TEST_F(TickerButtons, UpAndDownWithoutTickersOnlyGiveTheGridTheFocus) {
  form.ButTickerUp.UserPress();
  form.ButTickerDown.UserPress();
  EXPECT_THAT(Headers(), ElementsAre("Ticker"));
  ExpectGridHasFocus();
}

TEST_F(TickerButtons, UpAndDownMoveTheTicksAlong) {
  FG.Cols(3);
  Add({"A", "B"});
  FG.TextMatrix(1, 1, "-1");
  FG.TextMatrix(2, 2, "0");
  form.ButTickerUp.UserPress();
  EXPECT_THAT(TextsOfRow(1), ElementsAre("B", "", "0"));
  EXPECT_THAT(TextsOfRow(2), ElementsAre("A", "-1", ""));
  form.ButTickerDown.UserPress();
  EXPECT_THAT(TextsOfRow(1), ElementsAre("A", "-1", ""));
  EXPECT_THAT(TextsOfRow(2), ElementsAre("B", "", "0"));
}

// Sort

class Sorting : public TickerButtons {
 protected:
  Sorting() { Add({"B", "C", "A"}); }

  // The direction that the store holds, as text.
  std::string Stored() {
    return mGlobal::AppSettings().GetSetting("Settings", "Sort_Desc", "nothing").ToText();
  }
};

TEST_F(Sorting, IsUpwardsFirstAndThenTurnsWithEachPress) {
  form.ButSort.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("A", "B", "C"));
  form.ButSort.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("C", "B", "A"));
  form.ButSort.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("A", "B", "C"));
}

TEST_F(Sorting, StoresTheNewDirectionAtOnce) {
  EXPECT_EQ(Stored(), "nothing");
  form.ButSort.UserPress();
  EXPECT_EQ(Stored(), "True");
  form.ButSort.UserPress();
  EXPECT_EQ(Stored(), "False");
}

TEST_F(Sorting, GoesOnFromTheStoredDirection) {
  Save("Sort_Desc", true);
  form.ButSort.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("C", "B", "A"));
}

TEST_F(Sorting, KeepsTheActiveTickerActive) {
  ClickTicker(2);
  ASSERT_EQ(ActiveTicker(), "C");
  form.ButSort.UserPress();
  EXPECT_EQ(FG.Row(), 3);
  EXPECT_EQ(ActiveTicker(), "C");
}

TEST_F(Sorting, SortsWithoutRegardToCase) {
  FG.TextMatrix(2, 0, "c");
  FG.TextMatrix(3, 0, "a");
  form.ButSort.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("a", "B", "c"));
}

TEST_F(Sorting, SortsAllRowsWhateverIsSelected) {
  FG.Select(2, 0, 3, 0);
  form.ButSort.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("A", "B", "C"));
}

TEST_F(Sorting, ReportsThatThereIsNoTickerToSelect) {
  FG.Rows(1);
  Answers({"ABORT"});
  form.ButSort.UserPress();
  EXPECT_THAT(ReportedErrors(), ElementsAre(381));
  EXPECT_EQ(Stored(), "True");
}

TEST_F(Sorting, ReportsADirectionThatIsNone) {
  Save("Sort_Desc", "sideways");
  Answers({"ABORT"});
  form.ButSort.UserPress();
  EXPECT_THAT(ReportedErrors(), ElementsAre(13));
  EXPECT_THAT(Tickers(), ElementsAre("B", "C", "A"));
}

TEST_F(Sorting, StoresTheDirectionAgainOnceTheStoreTakesIt) {
  registry.Fail("RegSetValueExA");
  Answers({"RETRY"});
  form.ButSort.UserPress();
  EXPECT_THAT(ReportedErrors(), ElementsAre(kSavingFailed));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.ButSort_Click at line 0"));
  EXPECT_EQ(Stored(), "True");
  EXPECT_THAT(Tickers(), ElementsAre("A", "B", "C"));
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(Sorting, SortsAllTheSameWhenThatFailureIsIgnored) {
  registry.Fail("RegSetValueExA");
  Answers({"IGNORE"});
  form.ButSort.UserPress();
  EXPECT_EQ(Stored(), "nothing");
  EXPECT_THAT(Tickers(), ElementsAre("A", "B", "C"));
}

TEST_F(Sorting, LeavesTheTickersWhenThatFailureIsAborted) {
  registry.Fail("RegSetValueExA");
  Answers({"ABORT"});
  form.ButSort.UserPress();
  EXPECT_EQ(Stored(), "nothing");
  EXPECT_THAT(Tickers(), ElementsAre("B", "C", "A"));
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(Sorting, TakesTheReadDirectionForDownwardsWhenReadingIsIgnored) {
  Save("Sort_Desc", false);
  registry.Raise("RegQueryValueExA");
  Answers({"IGNORE"});
  form.ButSort.UserPress();
  EXPECT_EQ(Stored(), "False");
  EXPECT_THAT(Tickers(), ElementsAre("C", "B", "A"));
}

}  // namespace
}  // namespace mirelo::testing
