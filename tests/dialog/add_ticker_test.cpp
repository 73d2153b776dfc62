#include "dialog/grid_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class AddingTickers : public PlainGridTest {
 protected:
  void AddTicker(const std::string& ticker) {
    std::int32_t unused = 0;
    form.AddTicker(ticker, unused);
  }
};

TEST_F(AddingTickers, PutsEachIntoARowOfItsOwnAndMakesItActive) {
  Add({"MSFT", "IBM"});
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
  EXPECT_EQ(ActiveTicker(), "IBM");
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(AddingTickers, CapitalisesWhatTheUserTypes) {
  Add({"msft"});
  EXPECT_THAT(Tickers(), ElementsAre("MSFT"));
}

TEST_F(AddingTickers, SelectsTheRowOfATickerThatIsThereWhateverItsCase) {
  Add({"MSFT", "IBM", "msft"});
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
  EXPECT_EQ(ActiveTicker(), "MSFT");
}

TEST_F(AddingTickers, SelectsTheFirstOfEquals) {
  FG.Rows(4);
  for (const std::int32_t row : {2, 3}) FG.TextMatrix(row, 0, "ibm");
  AddTicker("IBM");
  EXPECT_EQ(FG.Row(), 2);
  EXPECT_EQ(FG.Rows(), 4);
}

TEST_F(AddingTickers, KeepsTheLettersThatTheCallerGave) {
  AddTicker("brk.B");
  EXPECT_THAT(Tickers(), ElementsAre("brk.B"));
}

TEST_F(AddingTickers, DoesNothingForAnEmptyText) {
  Add({"MSFT"});
  AddTicker("");
  EXPECT_THAT(Tickers(), ElementsAre("MSFT"));
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(AddingTickers, TakesTheHeaderForNoTicker) {
  Add({"ticker"});
  EXPECT_THAT(Tickers(), ElementsAre("TICKER"));
}

TEST_F(AddingTickers, EmptiesTheBoxAndGivesItTheFocusBack) {
  form.ButAdd.SetFocus();
  Add({"MSFT"});
  EXPECT_EQ(form.txtTicker.Text(), "");
  EXPECT_TRUE(form.txtTicker.HasFocus());
}

TEST_F(AddingTickers, OnlyTakesTheFocusBackForAnEmptyBox) {
  form.ButAdd.SetFocus();
  form.ButAdd.UserPress();
  EXPECT_THAT(Tickers(), IsEmpty());
  EXPECT_TRUE(form.txtTicker.HasFocus());
}

TEST_F(AddingTickers, FollowsTheEnterKey) {
  form.txtTicker.UserEdit("msft");
  form.UserEnter();
  EXPECT_THAT(Tickers(), ElementsAre("MSFT"));
}

// A grid without a column fails the statement that writes the ticker.
class AddingTickersToAGridWithoutColumns : public AddingTickers {
 protected:
  AddingTickersToAGridWithoutColumns() { FG.Cols(0); }
  void MendDuringTheReport() {
    desktop.while_open = [this] { FG.Cols(1); };
  }
};

TEST_F(AddingTickersToAGridWithoutColumns, WritesTheTickerAgainOnceThatWorks) {
  MendDuringTheReport();
  Answers({"RETRY"});
  AddTicker("MSFT");
  EXPECT_THAT(ReportedErrors(), ElementsAre(381));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.AddTicker at line 0"));
  EXPECT_THAT(Tickers(), ElementsAre("MSFT"));  // the row was added once
  EXPECT_EQ(FG.Row(), 1);
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(AddingTickersToAGridWithoutColumns, GoesOnWithTheSelectionWhenThatIsIgnored) {
  MendDuringTheReport();
  Answers({"IGNORE"});
  AddTicker("MSFT");
  EXPECT_THAT(Tickers(), ElementsAre(""));
  EXPECT_EQ(FG.Row(), 1);
}

TEST_F(AddingTickersToAGridWithoutColumns, LeavesOffThereWhenThatIsAborted) {
  MendDuringTheReport();
  Answers({"ABORT"});
  Add({"MSFT"});
  EXPECT_THAT(Tickers(), ElementsAre(""));
  EXPECT_EQ(FG.Row(), 0);
  EXPECT_EQ(form.txtTicker.Text(), "");  // the button's own routine goes on
}

}  // namespace
}  // namespace mirelo::testing
