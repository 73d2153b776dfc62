// The buttons beside the grid while it has a column of tick cells for each field.

#include "dialog/vertical_grid_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class VerticalTickerButtons : public VerticalGridTest {
 protected:
  // "B" is ticked in the first field, "C" in the second, "A" in none. The active cell is not a ticker's.
  VerticalTickerButtons() {
    Open("Last,Bid", {"B", "C", "A"});
    SetAllTicks({"x-", ".x", "--"});
  }
  ~VerticalTickerButtons() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  std::vector<std::int32_t> Selection() const { return {FG.Row(), FG.Col(), FG.RowSel(), FG.ColSel()}; }
};

TEST_F(VerticalTickerButtons, UpTakesTheTicksAlongAndSelectsTheTicker) {
  FG.Select(2, 3, 3, 3);
  form.ButTickerUp.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("C", "B", "A"));
  EXPECT_THAT(AllTicks(), ElementsAre(".x", "x-", "--"));
  EXPECT_THAT(Selection(), ElementsAre(1, 1, 1, 1));
}

TEST_F(VerticalTickerButtons, DownTakesTheTicksAlongAndSelectsTheTicker) {
  FG.Select(2, 3, 3, 3);
  form.ButTickerDown.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("B", "A", "C"));
  EXPECT_THAT(AllTicks(), ElementsAre("x-", "--", ".x"));
  EXPECT_THAT(Selection(), ElementsAre(3, 1, 3, 1));
}

TEST_F(VerticalTickerButtons, DeleteSelectsTheTickerAbove) {
  FG.Select(3, 3, 3, 2);
  form.ButDel.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("B", "C"));
  EXPECT_THAT(AllTicks(), ElementsAre("x-", ".x"));
  EXPECT_THAT(Selection(), ElementsAre(2, 1, 2, 1));
}

TEST_F(VerticalTickerButtons, SortGoesByTheTickersAndTakesTheTicksAlong) {
  FG.Select(2, 3);
  form.ButSort.UserPress();
  EXPECT_THAT(Tickers(), ElementsAre("A", "B", "C"));
  EXPECT_THAT(AllTicks(), ElementsAre("--", "x-", ".x"));
  EXPECT_THAT(Selection(), ElementsAre(3, 1, 3, 1));
}

TEST_F(VerticalTickerButtons, AddFindsTheTickerWithoutTouchingTicks) {
  FG.Select(1, 2);
  Add({"c"});
  EXPECT_THAT(Tickers(), ElementsAre("B", "C", "A"));
  EXPECT_THAT(AllTicks(), ElementsAre("x-", ".x", "--"));
  EXPECT_EQ(ActiveTicker(), "C");
}

}  // namespace
}  // namespace mirelo::testing
