// The field columns of the grid, which follow the list of shown columns.

#include "dialog/vertical_grid_test.h"

namespace mirelo::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kChartsColumn = "Charts (Last & Volume)";

class FieldColumns : public VerticalGridTest {
 protected:
  ~FieldColumns() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  void Show(const std::string& field) { Move(form.ListLeft, field, form.ButRight); }
  void Hide(const std::string& field) { Move(form.ListRight, field, form.ButLeft); }
  void MoveUp(const std::string& field) { Move(form.ListRight, field, form.ButUp); }

 private:
  void Move(forms::ListBox& list, const std::string& field, forms::Button& button) {
    form.C1TTickersSettings.UserSelect(kFields);
    const auto found = std::find(list.Items().begin(), list.Items().end(), field);
    ASSERT_NE(found, list.Items().end()) << field;
    list.UserSelect(static_cast<std::int32_t>(found - list.Items().begin()));
    ASSERT_TRUE(button.Enabled());
    button.UserPress();
    form.C1TTickersSettings.UserSelect(kTickers);
  }
};

TEST_F(FieldColumns, KeepTheirTicksWhenTheOrderChanges) {
  Open("Last,Bid,Ask", {"A", "B"});
  SetAllTicks({"x-.", ".x-"});
  MoveUp("Ask");
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "Ask", "Bid"));
  EXPECT_THAT(AllTicks(), ElementsAre("x.-", ".-x"));
  EXPECT_THAT(Tickers(), ElementsAre("A", "B"));
}

TEST_F(FieldColumns, KeepTheirTicksWhenAnotherGoes) {
  Open("Last,Bid,Ask", {"A", "B"});
  SetAllTicks({"x-.", ".x-"});
  Hide("Last");
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Bid", "Ask"));
  EXPECT_THAT(AllTicks(), ElementsAre("-.", "x-"));
}

TEST_F(FieldColumns, StartEmptyAtTheEnd) {
  Open("Last", {"A", "B"});
  SetAllTicks({"x", "-"});
  Show("Open");
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "Open"));
  EXPECT_THAT(AllTicks(), ElementsAre("x.", "-."));
  EXPECT_EQ(FG.ColDataType(3), forms::Grid::kBooleanColumn);
}

TEST_F(FieldColumns, AreFoundAgainWhateverTheCaseOfTheirHeaders) {
  Open("Last,Bid", {"A"});
  SetTicks(1, "x-");
  FG.TextMatrix(0, 2, "LAST");
  MoveUp("Bid");
  EXPECT_EQ(Ticks(1), "-x");
}

TEST_F(FieldColumns, StayAwayFromWhatAVerticalTableCannotShow) {
  Open("Last", {"A"});
  SetTicks(1, "x");
  Show("Tick");
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last"));
  EXPECT_EQ(Ticks(1), "x");
}

TEST_F(FieldColumns, ComeAndGoAllTogether) {
  Save("ListLeft", "Tick,Volume,52w Low,Open");
  Open("Last,Bid", {"A"});
  SetTicks(1, "x-");
  form.C1TTickersSettings.UserSelect(kFields);
  form.ListRight.UserSelect(1);
  form.ButAllLeft.UserPress();
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker"));
  EXPECT_THAT(Tickers(), ElementsAre("A"));
  form.ButAllRight.UserPress();
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Volume", "Open", "Last", "Bid"));
  EXPECT_EQ(Ticks(1), "....");
}

// The column of charts

TEST_F(FieldColumns, KeepTheTicksAndPicturesOfChartsWithBothFields) {
  OpenWithCharts("Last,LastVolume,Bid", {"A", "B"});
  SetAllTicks({"xx.x", "...-"});
  MoveUp("Bid");
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "Bid", "LastVolume", kChartsColumn));
  EXPECT_THAT(AllTicks(), ElementsAre("x.xx", "...-"));
  EXPECT_THAT(Pictures(5), Each("chart"));
  for (const std::int32_t col : {2, 3, 4}) EXPECT_THAT(Pictures(col), Each(""));
}

TEST_F(FieldColumns, LoseTheTicksOfChartsWithoutOneOfTheirFieldsButNotThePictures) {
  for (const char* field : {"Last", "LastVolume"}) {
    SCOPED_TRACE(field);
    OpenWithCharts("Last,LastVolume,Bid", {"A", "B"});
    SetAllTicks({"xxxx", "xx-x"});
    Hide(field);
    EXPECT_THAT(AllTicks(), ElementsAre("xx.", "x-."));
    EXPECT_THAT(Pictures(4), Each("chart"));
  }
}

TEST_F(FieldColumns, TakeOverWhatStoodInTheirPlaceWhenTheyAreNew) {
  OpenWithCharts("Last,LastVolume", {"A", "B"});
  SetAllTicks({"xxx", "xx-"});
  Show("Open");
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "LastVolume", "Open", kChartsColumn));
  EXPECT_THAT(AllTicks(), ElementsAre("xxxx", "xx--"));
  EXPECT_THAT(Pictures(4), Each(""));
  EXPECT_THAT(Pictures(5), Each("chart"));
}

// Plain mode

TEST_F(FieldColumns, FollowTheListWhileTheyAreNotShown) {
  Save("VerticalTable", 0);
  Open("Last,Bid", {"A"});
  Hide("Last");
  Show("Open");
  EXPECT_THAT(Headers(), ElementsAre("Ticker"));
  form.chkVerTable.UserClick();
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Bid", "Open"));
}

TEST_F(FieldColumns, AreNoneWhenNoColumnFits) {
  Open("Last", {"A"});
  form.ListRight.Clear();
  form.ListRight.AddItem("Tick");
  form.GetListVerticFields();
  EXPECT_THAT(Headers(), ElementsAre("", ""));
}

}  // namespace
}  // namespace mirelo::testing
