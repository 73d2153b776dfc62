// A click that selects several cells of the grid: of a column, a row, or all.

#include "dialog/vertical_grid_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Box = ScriptedDesktop::Box;

const Box kFieldsMissing{
    "You should have the 'Last' and 'LastVolume' fields in the vertical table to build charts.", 64,
    "Dovanta2"};

class GridSelection : public VerticalGridTest {
 protected:
  ~GridSelection() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  void ClickHeader(std::int32_t col) { FG.UserClickCell(0, col); }
  void ClickFixedCell(std::int32_t row) { FG.UserClickCell(row, 0); }
  void ClickCorner() { FG.UserClickCell(0, 0); }
  void Drag(std::int32_t row, std::int32_t col, std::int32_t to_row, std::int32_t to_col) {
    FG.Select(row, col);
    FG.UserDragTo(to_row, to_col);
  }
  std::vector<std::int32_t> Selection() const { return {FG.Row(), FG.Col(), FG.RowSel(), FG.ColSel()}; }

  struct Case {
    const char* name;
    Texts before;
    Texts after;
  };
  template <class Act>
  void Expect(const std::vector<Case>& cases, Act act) {
    for (const Case& c : cases) {
      SCOPED_TRACE(c.name);
      SetAllTicks(c.before);
      act();
      EXPECT_EQ(AllTicks(), c.after);
    }
    EXPECT_THAT(desktop.boxes, IsEmpty());
  }
};

// Plain mode

TEST_F(GridSelection, InPlainModeIsCollapsedToTheActiveCell) {
  Save("VerticalTable", 0);
  Open("Last", {"A", "B", "C"});
  Drag(1, 0, 3, 0);
  EXPECT_THAT(Selection(), ElementsAre(1, 0, 1, 0));
  ClickHeader(0);
  EXPECT_THAT(Selection(), ElementsAre(1, 0, 1, 0));
  EXPECT_THAT(Tickers(), ElementsAre("A", "B", "C"));
}

// A column

TEST_F(GridSelection, OfAColumnTicksItOrTakesItsTicksAway) {
  Open("Last,Bid", {"A", "B", "C"});
  Expect({{"first not ticked", {"..", ".x", "-."}, {".x", ".x", "-x"}},
          {"first off", {"x-", "-x", ".."}, {"xx", "-x", ".x"}},
          {"first ticked", {".x", "x.", "-x"}, {".-", "x-", "--"}}},
         [this] { ClickHeader(3); });
  EXPECT_THAT(Selection(), ElementsAre(1, 3, 3, 3));
}

TEST_F(GridSelection, OfAColumnTakesAnyOtherTextForATick) {
  Open("Last,Bid", {"A", "B"});
  FG.TextMatrix(1, 3, "True");
  ClickHeader(3);
  EXPECT_THAT(AllTicks(), ElementsAre(".-", ".-"));
}

TEST_F(GridSelection, OfAColumnOfOneTickerIsOneCellAndChangesNothing) {
  OpenWithCharts("Last,LastVolume", {"A"});
  for (std::int32_t col = 0; col < FG.Cols(); ++col) {
    SCOPED_TRACE(col);
    if (col != 0) ClickHeader(col);
    EXPECT_EQ(Ticks(1), "...");
  }
}

TEST_F(GridSelection, OfAPartOfAColumnIsJudgedByItsFirstCell) {
  Open("Last,Bid", {"A", "B", "C", "D"});
  SetAllTicks({"x.", "..", "..", "x."});
  Drag(3, 2, 4, 2);
  EXPECT_THAT(AllTicks(), ElementsAre("x.", "x.", "x.", "x."));
  Drag(4, 2, 3, 2);
  EXPECT_THAT(AllTicks(), ElementsAre("-.", "-.", "-.", "-."));
  EXPECT_THAT(Selection(), ElementsAre(4, 2, 3, 2));
}

TEST_F(GridSelection, OfTickersChangesNothing) {
  Open("Last,Bid", {"A", "B", "C"});
  Drag(2, 1, 3, 1);
  EXPECT_THAT(AllTicks(), ElementsAre("..", "..", ".."));
}

TEST_F(GridSelection, OfAFieldOfChartsTakesTheTicksOfChartsAlong) {
  OpenWithCharts("Last,LastVolume,Bid", {"A", "B"});
  Expect({{"Last", {"xx.x", "-x.x"}, {"-x.-", "-x.-"}}}, [this] { ClickHeader(2); });
  Expect({{"LastVolume", {".x.x", "xxxx"}, {".-.-", "x-x-"}}}, [this] { ClickHeader(3); });
  Expect({{"Bid", {"xxxx", "..x."}, {"xx-x", "..-."}}}, [this] { ClickHeader(4); });
}

TEST_F(GridSelection, OfAFieldOfChartsTakesTheLastColumnForTheirsUnseen) {
  OpenWithCharts("Last,LastVolume,Bid", {"A", "B"});
  form.DeleteFromFGColCharts();
  Expect({{"Last", {"xxx", ".xx"}, {"-x-", "-x-"}}}, [this] { ClickHeader(2); });
}

TEST_F(GridSelection, OfAFieldOfChartsLeavesTheLastColumnWhileChartsAreOff) {
  Open("Last,LastVolume,Bid", {"A", "B"});
  Expect({{"Last", {"xxx", ".xx"}, {"-xx", "-xx"}}}, [this] { ClickHeader(2); });
}

TEST_F(GridSelection, OfAFieldOfChartsTicksNothingElse) {
  OpenWithCharts("Last,LastVolume,Bid", {"A", "B"});
  Expect({{"Last", {"....", "...."}, {"x...", "x..."}}}, [this] { ClickHeader(2); });
}

TEST_F(GridSelection, OfTheColumnOfChartsTicksBothFieldsAsWell) {
  OpenWithCharts("Last,Bid,LastVolume", {"A", "B"});
  Expect({{"not ticked", {"....", "x-.x"}, {"x.xx", "x-xx"}}, {"ticked", {"x.xx", "...x"}, {"x.x-", "...-"}}},
         [this] { ClickHeader(5); });
}

TEST_F(GridSelection, OfTheColumnOfChartsNeedsBothFields) {
  for (const char* fields : {"Last,Bid", "LastVolume,Bid", "Ask,Bid"}) {
    SCOPED_TRACE(fields);
    desktop.boxes.clear();
    OpenWithCharts(fields, {"A", "B"});
    ClickHeader(4);
    EXPECT_THAT(desktop.boxes, ElementsAre(kFieldsMissing));
    EXPECT_THAT(AllTicks(), ElementsAre("...", "..."));
  }
}

TEST_F(GridSelection, OfTheColumnOfChartsLosesItsTicksWithoutTheFieldsToo) {
  OpenWithCharts("Ask,Bid", {"A", "B"});
  Expect({{"ticked", {"..x", ".xx"}, {"..-", ".x-"}}}, [this] { ClickHeader(4); });
}

// A row

TEST_F(GridSelection, OfARowTicksItOrTakesItsTicksAway) {
  Open("Last,Bid,Ask", {"A", "B"});
  Expect({{"first not ticked", {"...", ".x-"}, {"...", "xxx"}},
          {"first off", {"x..", "-.."}, {"x..", "xxx"}},
          {"first ticked", {"...", "x.x"}, {"...", "---"}}},
         [this] { ClickFixedCell(2); });
  EXPECT_THAT(Selection(), ElementsAre(2, 1, 2, 4));
}

TEST_F(GridSelection, OfARowTicksChartsWithBothFields) {
  OpenWithCharts("Bid,Last,LastVolume", {"A", "B"});
  Expect({{"not ticked", {"....", "...."}, {"....", "xxxx"}}, {"ticked", {"....", "x..x"}, {"....", "----"}}},
         [this] { ClickFixedCell(2); });
}

TEST_F(GridSelection, OfARowLeavesChartsAsTheyAreWithoutBothFields) {
  OpenWithCharts("Bid,Last", {"A", "B"});
  Expect({{"empty", {"...", "..."}, {"...", "xx."}},
          {"off", {"...", ".x-"}, {"...", "xx-"}},
          {"ticked", {"...", "..x"}, {"...", "xxx"}},
          {"untick", {"...", "x.x"}, {"...", "---"}}},
         [this] { ClickFixedCell(2); });
}

TEST_F(GridSelection, OfAPartOfARowCountsAsTheRow) {
  Open("Last,Bid,Ask", {"A", "B", "C"});
  Drag(3, 2, 3, 4);
  EXPECT_THAT(AllTicks(), ElementsAre("...", "...", "xxx"));
  Drag(3, 4, 1, 2);  // a block, judged by its active cell's row
  EXPECT_THAT(AllTicks(), ElementsAre("...", "...", "---"));
}

// All

TEST_F(GridSelection, OfTheCornerTicksAllOrTakesAllTicksAway) {
  Open("Last,Bid", {"A", "B"});
  Expect({{"first not ticked", {"..", "xx"}, {"xx", "xx"}},
          {"first off", {"-x", ".."}, {"xx", "xx"}},
          {"first ticked", {"x.", ".."}, {"--", "--"}}},
         [this] { ClickCorner(); });
  EXPECT_THAT(Selection(), ElementsAre(1, 1, 2, 3));
}

TEST_F(GridSelection, OfTheCornerTicksChartsWithBothFields) {
  OpenWithCharts("Last,LastVolume", {"A", "B"});
  Expect({{"not ticked", {"...", "..."}, {"xxx", "xxx"}}, {"ticked", {"x..", "..x"}, {"---", "---"}}},
         [this] { ClickCorner(); });
}

TEST_F(GridSelection, OfTheCornerTakesTheTicksOfChartsAwayWithoutBothFields) {
  OpenWithCharts("Bid,LastVolume", {"A", "B"});
  Expect({{"not ticked", {"...", "..x"}, {"xx-", "xx-"}}, {"ticked", {"x.x", "..x"}, {"---", "---"}}},
         [this] { ClickCorner(); });
}

TEST_F(GridSelection, OfTheTickersHeaderCountsAsTheCorner) {
  Open("Last,Bid", {"A", "B"});
  ClickHeader(1);
  EXPECT_THAT(AllTicks(), ElementsAre("xx", "xx"));
}

TEST_F(GridSelection, OfTheFirstRowsFixedCellCountsAsTheCorner) {
  Open("Last,Bid", {"A", "B"});
  ClickFixedCell(1);
  EXPECT_THAT(AllTicks(), ElementsAre("xx", "xx"));
}

TEST_F(GridSelection, FromAnyCellOnTheDiagonalCountsAsTheCorner) {
  Open("Last,Bid,Ask", {"A", "B", "C"});
  Drag(2, 2, 3, 2);
  EXPECT_THAT(AllTicks(), ElementsAre("xxx", "xxx", "xxx"));
  Drag(3, 3, 3, 4);
  EXPECT_THAT(AllTicks(), ElementsAre("---", "---", "---"));
}

TEST_F(GridSelection, OfTheCornerReportsThatThereIsNoField) {
  Open("", {"A", "B"});
  Answers({"ABORT"});
  ClickCorner();
  EXPECT_THAT(ReportedErrors(), ElementsAre(381));
  EXPECT_THAT(Tickers(), ElementsAre("A", "B"));
}

}  // namespace
}  // namespace mirelo::testing
