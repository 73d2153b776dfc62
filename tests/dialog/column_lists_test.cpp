#include <functional>

#include "dialog/lists_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ColumnLists : public ListsTest {
 protected:
  ~ColumnLists() override { EXPECT_THAT(CallStack(), IsEmpty()); }
};

// One entry to the other list

TEST_F(ColumnLists, LeftMovesTheSelectedEntryToTheEndOfTheAvailableOnes) {
  form.ListRight.UserSelect(2);
  form.ButLeft.UserPress();
  EXPECT_THAT(Left(), ElementsAre("Tick", "Volume", "High", "Bid"));
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Last", "Ask"));
  EXPECT_EQ(SelectedLeft(), "Bid");
  EXPECT_EQ(SelectedRight(), "nothing");
  EXPECT_TRUE(form.ListLeft.HasFocus());
  EXPECT_THAT(ButtonsOn(), ElementsAre("Right", "AllRight"));
}

TEST_F(ColumnLists, RightMovesTheSelectedEntryToTheEndOfTheShownOnes) {
  form.ListLeft.UserSelect(1);
  form.ButRight.UserPress();
  EXPECT_THAT(Left(), ElementsAre("Tick", "High"));
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Last", "Bid", "Ask", "Volume"));
  EXPECT_EQ(SelectedRight(), "Volume");
  EXPECT_EQ(SelectedLeft(), "nothing");
  EXPECT_TRUE(form.ListRight.HasFocus());
  EXPECT_THAT(ButtonsOn(), ElementsAre("Left", "AllLeft", "Up"));
}

TEST_F(ColumnLists, RightAsSecondEntryCanMoveNeitherUpNorDown) {
  Fill({"Tick"}, {"Ticker"});
  form.ListLeft.UserSelect(0);
  form.ButRight.UserPress();
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Tick"));
  EXPECT_THAT(ButtonsOn(), ElementsAre("Left", "AllLeft"));
}

TEST_F(ColumnLists, DoubleClickMovesAnEntryToTheOtherList) {
  form.ListLeft.UserDoubleClick(0);
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Last", "Bid", "Ask", "Tick"));
  form.ListRight.UserDoubleClick(1);
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Bid", "Ask", "Tick"));
  EXPECT_THAT(Left(), ElementsAre("Volume", "High", "Last"));
}

TEST_F(ColumnLists, DoubleClickOnTheTickerColumnDoesNothing) {
  form.ListRight.UserDoubleClick(0);
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Last", "Bid", "Ask"));
  EXPECT_THAT(Left(), ElementsAre("Tick", "Volume", "High"));
  EXPECT_THAT(ButtonsOn(), IsEmpty());
}

// No person gets here: the buttons are off without a selection.
TEST_F(ColumnLists, MovingWithoutASelectionAddsAnEmptyEntry) {
  form.ButLeft.Click.Raise();
  EXPECT_THAT(Left(), ElementsAre("Tick", "Volume", "High", ""));
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Last", "Bid", "Ask"));
  form.ListLeft.ListIndex(-1);
  form.ButRight.Click.Raise();
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Last", "Bid", "Ask", ""));
}

// All entries

TEST_F(ColumnLists, AllLeftLeavesTheTickerColumn) {
  form.ListRight.UserSelect(2);
  form.ButAllLeft.UserPress();
  EXPECT_THAT(Left(), ElementsAre("Tick", "Volume", "High", "Last", "Bid", "Ask"));
  EXPECT_THAT(Right(), ElementsAre("Ticker"));
  EXPECT_EQ(SelectedLeft(), "Tick");
  EXPECT_TRUE(form.ListLeft.HasFocus());
  EXPECT_THAT(ButtonsOn(), ElementsAre("Right", "AllRight"));
}

TEST_F(ColumnLists, AllLeftOfTheTickerColumnAloneMovesNothingAndTurnsTheButtons) {
  Fill({"Tick", "Volume"}, {"Ticker"});
  form.ButLeft.Enabled(true);
  form.ButAllLeft.Enabled(true);
  form.ButAllLeft.UserPress();
  EXPECT_THAT(Left(), ElementsAre("Tick", "Volume"));
  EXPECT_THAT(Right(), ElementsAre("Ticker"));
  EXPECT_THAT(ButtonsOn(), ElementsAre("Right", "AllRight"));
}

TEST_F(ColumnLists, AllLeftOfAnEmptyListMovesNothing) {
  Fill({"Tick"}, {});
  form.ButAllLeft.Click.Raise();
  EXPECT_THAT(Left(), ElementsAre("Tick"));
  EXPECT_THAT(ButtonsOn(), ElementsAre("Right", "AllRight"));
}

TEST_F(ColumnLists, AllRightSelectsTheThirdEntryWhateverWasAdded) {
  form.ListLeft.UserSelect(0);
  form.ButAllRight.UserPress();
  EXPECT_THAT(Left(), IsEmpty());
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Last", "Bid", "Ask", "Tick", "Volume", "High"));
  EXPECT_EQ(SelectedRight(), "Bid");
  EXPECT_TRUE(form.ListRight.HasFocus());
  EXPECT_THAT(ButtonsOn(), ElementsAre("Left", "AllLeft", "Up", "Down"));
}

TEST_F(ColumnLists, AllRightOfAnEmptyListStillSelectsTheThirdEntry) {
  Fill({}, {"Ticker", "Last", "Bid"});
  form.ButAllRight.Click.Raise();
  EXPECT_EQ(SelectedRight(), "Bid");
  EXPECT_THAT(ButtonsOn(), ElementsAre("Left", "AllLeft", "Up"));
}

TEST_F(ColumnLists, AllRightReportsThatThereIsNoThirdEntry) {
  Fill({"Tick"}, {"Ticker"});
  form.ListLeft.UserSelect(0);
  Answers({"ABORT"});
  form.ButAllRight.UserPress();
  EXPECT_THAT(ReportedErrors(), ElementsAre(380));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.ButAllRight_Click at line 0"));
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Tick"));
}

TEST_F(ColumnLists, AllRightGoesOnWhenTheUserIgnoresThat) {
  Fill({"Tick"}, {"Ticker"});
  form.ListLeft.UserSelect(0);
  Answers({"IGNORE"});
  form.ButAllRight.UserPress();
  EXPECT_TRUE(form.ListRight.HasFocus());
  EXPECT_THAT(ButtonsOn(), ElementsAre("Left", "AllLeft"));
}

TEST_F(ColumnLists, AllRightSelectsAgainOnceThereIsAThirdEntry) {
  Fill({"Tick"}, {"Ticker"});
  form.ListLeft.UserSelect(0);
  Answers({"RETRY"});
  desktop.while_open = [this] { form.ListRight.AddItem("Last"); };
  form.ButAllRight.UserPress();
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Tick", "Last"));
  EXPECT_EQ(SelectedRight(), "Last");
}

// Up and down

TEST_F(ColumnLists, UpMovesTheSelectedEntryAndFollowsIt) {
  form.ListRight.UserSelect(3);
  form.ButUp.UserPress();
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Last", "Ask", "Bid"));
  EXPECT_EQ(SelectedRight(), "Ask");
  EXPECT_THAT(ButtonsOn(), ElementsAre("Left", "AllLeft", "Up", "Down"));
  form.ButUp.UserPress();
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Ask", "Last", "Bid"));
  EXPECT_THAT(ButtonsOn(), ElementsAre("Left", "AllLeft", "Down"));
}

TEST_F(ColumnLists, DownMovesTheSelectedEntryAndFollowsIt) {
  form.ListRight.UserSelect(1);
  form.ButDown.UserPress();
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Bid", "Last", "Ask"));
  EXPECT_EQ(SelectedRight(), "Last");
}

TEST_F(ColumnLists, DownFromTheLastPlaceButOneLeavesOnlyUp) {
  form.ListRight.UserSelect(2);
  form.ButDown.UserPress();
  EXPECT_THAT(Right(), ElementsAre("Ticker", "Last", "Ask", "Bid"));
  EXPECT_FALSE(form.ButDown.Enabled());
  EXPECT_TRUE(form.ButUp.Enabled());
}

// Clicks

TEST_F(ColumnLists, ClickOnAnAvailableColumnLeavesOnlyTheWayRight) {
  form.ListRight.UserSelect(2);
  form.ListLeft.UserSelect(1);
  EXPECT_EQ(SelectedLeft(), "Volume");
  EXPECT_EQ(SelectedRight(), "nothing");
  EXPECT_THAT(ButtonsOn(), ElementsAre("Right", "AllRight"));
}

TEST_F(ColumnLists, ClickOnTheTickerColumnTurnsAllButtonsOff) {
  form.ListLeft.UserSelect(1);
  form.ListRight.UserSelect(0);
  EXPECT_EQ(SelectedLeft(), "nothing");
  EXPECT_THAT(ButtonsOn(), IsEmpty());
}

TEST_F(ColumnLists, ClickOnAnotherShownColumnLeavesTheWayLeft) {
  form.ListLeft.UserSelect(1);
  form.ListRight.UserSelect(2);
  EXPECT_EQ(SelectedLeft(), "nothing");
  EXPECT_THAT(ButtonsOn(), ElementsAre("Left", "AllLeft", "Up", "Down"));
}

TEST_F(ColumnLists, TakingTheSelectionFromTheAvailableColumnsChangesNoButton) {
  form.ListLeft.UserSelect(1);
  form.ListLeft.ListIndex(-1);
  EXPECT_THAT(ButtonsOn(), ElementsAre("Right", "AllRight"));
}

// EnableUpDn, for each number of shown columns and each selection

TEST_F(ColumnLists, UpAndDownGoByThePlaceOfTheSelection) {
  struct Case {
    int count;
    int index;
    bool up;
    bool down;
    bool takes_focus;  // from the list of available columns
  };
  const std::vector<Case> cases{
      {1, 0, false, false, false}, {2, 0, false, false, false}, {2, 1, false, false, false},
      {3, 0, false, false, true},  {3, 1, false, true, true},   {3, 2, true, false, true},
      {4, 2, true, true, false},   {4, 3, true, false, true},   {5, 3, true, true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.count << " columns, index " << c.index);
    Fill({}, Texts(static_cast<std::size_t>(c.count), "column"));
    // The opposite of what is to come.
    form.ButUp.Enabled(!c.up);
    form.ButDown.Enabled(!c.down);
    form.ListLeft.SetFocus();
    form.ListRight.ListIndex(c.index);
    EXPECT_EQ(form.ButUp.Enabled(), c.up);
    EXPECT_EQ(form.ButDown.Enabled(), c.down);
    EXPECT_EQ(form.ListRight.HasFocus(), c.takes_focus);
  }
}

TEST_F(ColumnLists, UpAndDownStayAsTheyAreWithoutASelection) {
  for (const bool on : {false, true}) {
    Fill({}, {"Ticker", "Last", "Bid"});
    form.ListRight.ListIndex(2);
    form.ButUp.Enabled(on);
    form.ButDown.Enabled(on);
    form.ListLeft.SetFocus();
    form.ListRight.ListIndex(-1);
    EXPECT_EQ(form.ButUp.Enabled(), on);
    EXPECT_EQ(form.ButDown.Enabled(), on);
    EXPECT_TRUE(form.ListLeft.HasFocus());
  }
}

TEST_F(ColumnLists, UpAndDownGoOffWithoutASelectionInAShortList) {
  Fill({}, {"Ticker", "Last"});
  form.ListRight.ListIndex(1);
  form.ButUp.Enabled(true);
  form.ButDown.Enabled(true);
  form.ListRight.ListIndex(-1);
  EXPECT_THAT(ButtonsOn(), ElementsAre("Left", "AllLeft"));
}

// What follows from a change: the grid is laid out anew, which shows in its widths.

TEST_F(ColumnLists, EachChangeOfTheShownColumnsLaysTheGridOutAnew) {
  struct Case {
    const char* name;
    std::function<void()> act;
  };
  const std::vector<Case> cases{
      {"ButLeft", [this] { form.ButLeft.Click.Raise(); }},
      {"ButRight", [this] { form.ButRight.Click.Raise(); }},
      {"ButAllLeft", [this] { form.ButAllLeft.Click.Raise(); }},
      {"ButAllRight", [this] { form.ButAllRight.Click.Raise(); }},
      {"ButUp", [this] { form.ButUp.Click.Raise(); }},
      {"ButDown", [this] { form.ButDown.Click.Raise(); }},
      {"double click left", [this] { form.ListLeft.UserDoubleClick(0); }},
      {"double click right", [this] { form.ListRight.UserDoubleClick(2); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Fill({"Tick", "Volume", "High"}, {"Ticker", "Last", "Bid", "Ask"});
    form.ListRight.ListIndex(2);
    FG.ColWidth(0, 5);
    c.act();
    EXPECT_EQ(FG.ColWidth(0), 1700);
  }
}

TEST_F(ColumnLists, AClickLeavesTheGridAsItIs) {
  FG.ColWidth(0, 5);
  form.ListLeft.UserSelect(1);
  form.ListRight.UserSelect(2);
  form.ListRight.UserSelect(0);
  form.ListRight.UserDoubleClick(0);
  EXPECT_EQ(FG.ColWidth(0), 5);
}

}  // namespace
}  // namespace mirelo::testing
