// A click on one cell of the grid.

#include "automation/runtime_error.h"
#include "dialog/vertical_grid_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Box = ScriptedDesktop::Box;

const Box kLastMissing{"Add the 'Last' column for the vertical output.", 64, "Dovanta2"};
const Box kLastVolumeMissing{"Add  the 'LastVolume' column for the vertical output.", 64, "Dovanta2"};

class TickCells : public VerticalGridTest {
 protected:
  ~TickCells() override { EXPECT_THAT(CallStack(), IsEmpty()); }
};

TEST_F(TickCells, ToggleAndLeaveAllOthersAsTheyAre) {
  Open("Last,Bid,Ask", {"A", "B"});
  FG.UserClickCell(2, 3);
  EXPECT_THAT(AllTicks(), ElementsAre("...", ".x."));
  FG.UserClickCell(2, 3);
  EXPECT_THAT(AllTicks(), ElementsAre("...", ".-."));
  FG.UserClickCell(2, 3);
  EXPECT_THAT(AllTicks(), ElementsAre("...", ".x."));
}

TEST_F(TickCells, AreLeftAloneByAClickOnATicker) {
  Open("Last,Bid", {"A", "B"});
  ClickTicker(2);
  EXPECT_THAT(AllTicks(), ElementsAre("..", ".."));
}

TEST_F(TickCells, StandBesideTickersThatCannotBeEdited) {
  Open("Last", {"A"});
  ClickTicker(1);
  FG.UserEditCell("B");
  EXPECT_THAT(Tickers(), ElementsAre("A"));
}

// Without vertical tables the grid as a whole is not editable; nothing else protects the tickers.
TEST_F(TickCells, AreTheOnlyReasonToKeepTickersFromBeingEdited) {
  Save("VerticalTable", 0);
  Open("Last", {"A"});
  FG.Editable(1);
  ClickTicker(1);
  FG.UserEditCell("B");
  EXPECT_THAT(Tickers(), ElementsAre("B"));
}

// What an edit brings about. "Last" stands in column 2, "LastVolume" in 3, charts in 5.

struct EditCase {
  const char* name;
  const char* before;
  std::int32_t col;
  const char* after;
};

TEST_F(TickCells, OfChartsTickBothFieldsAndNeedThem) {
  constexpr EditCase kCases[] = {
      {"charts ticked", "....", 5, "xx.x"},
      {"charts ticked again", "--x-", 5, "xxxx"},
      {"charts unticked", "xx.x", 5, "xx.-"},
      {"Last unticked", "xx.x", 2, "-x.-"},
      {"Last unticked without charts", "xx.-", 2, "-x.-"},
      {"Last ticked", "-x.x", 2, "xx.x"},
      {"LastVolume unticked", "xxxx", 3, "x-x-"},
      {"LastVolume ticked", "x-.-", 3, "xx.-"},
      {"another field unticked", "xxxx", 4, "xx-x"},
      {"another field ticked", "xx.x", 4, "xxxx"},
  };
  OpenWithCharts("Last,LastVolume,Bid", {"A", "B"});
  for (const EditCase& c : kCases) {
    SCOPED_TRACE(c.name);
    SetAllTicks({"xxxx", c.before});
    FG.UserClickCell(2, c.col);
    EXPECT_THAT(AllTicks(), ElementsAre("xxxx", c.after));
    EXPECT_THAT(desktop.boxes, IsEmpty());
  }
}

TEST_F(TickCells, OfChartsAreFoundWhateverTheCaseOfTheirHeaders) {
  OpenWithCharts("last,LASTVOLUME", {"A"});
  FG.TextMatrix(0, 4, "CHARTS (last & VOLUME)");
  FG.UserClickCell(1, 4);
  EXPECT_EQ(Ticks(1), "xxx");
  FG.UserClickCell(1, 2);
  EXPECT_EQ(Ticks(1), "-x-");
}

TEST_F(TickCells, OfChartsAreTakenBackWithoutLast) {
  OpenWithCharts("LastVolume,Bid", {"A"});
  FG.UserClickCell(1, LastColumn());
  EXPECT_THAT(desktop.boxes, ElementsAre(kLastMissing));
  EXPECT_EQ(Ticks(1), "..-");
}

TEST_F(TickCells, OfChartsAreTakenBackWithoutLastVolume) {
  OpenWithCharts("Last,Bid", {"A"});
  FG.UserClickCell(1, LastColumn());
  EXPECT_THAT(desktop.boxes, ElementsAre(kLastVolumeMissing));
  EXPECT_EQ(Ticks(1), "..-");
}

TEST_F(TickCells, OfChartsSayOfEachFieldThatItIsMissing) {
  OpenWithCharts("Bid", {"A"});
  FG.UserClickCell(1, LastColumn());
  EXPECT_THAT(desktop.boxes, ElementsAre(kLastMissing, kLastVolumeMissing));
  EXPECT_EQ(Ticks(1), ".-");
}

TEST_F(TickCells, OfAFieldOfChartsLeaveTheLastColumnWhileChartsAreOff) {
  Open("Last,LastVolume,Bid", {"A"});
  FG.TextMatrix(0, 4, "Charts (Last & Volume)");
  SetTicks(1, "xxx");
  FG.UserClickCell(1, 2);
  EXPECT_EQ(Ticks(1), "-xx");
}

TEST_F(TickCells, OfAFieldOfChartsLeaveALastColumnThatIsNotTheirs) {
  OpenWithCharts("Last,LastVolume", {"A"});
  FG.TextMatrix(0, 4, "Bid");
  SetTicks(1, "xxx");
  FG.UserClickCell(1, 3);
  EXPECT_EQ(Ticks(1), "x-x");
}

TEST_F(TickCells, ToggleWithTheBlankKeyAsWell) {
  OpenWithCharts("Last,LastVolume", {"A"});
  FG.Select(1, 4);
  FG.UserToggle();
  EXPECT_EQ(Ticks(1), "xxx");
}

TEST_F(TickCells, ShowAMessageAgainThatCouldNotBeShown) {
  OpenWithCharts("LastVolume", {"A"});
  desktop.while_open = [this] {
    if (desktop.boxes.size() == 1 && desktop.reports.empty()) throw Errors::OutOfMemory();
  };
  Answers({"RETRY"});
  FG.UserClickCell(1, LastColumn());
  EXPECT_THAT(desktop.boxes, ElementsAre(kLastMissing, kLastMissing));
  EXPECT_EQ(Ticks(1), ".-");
}

TEST_F(TickCells, StayTickedWhenTheMessageIsAborted) {
  OpenWithCharts("LastVolume", {"A"});
  desktop.while_open = [this] {
    if (desktop.reports.empty()) throw Errors::OutOfMemory();
  };
  Answers({"ABORT"});
  FG.UserClickCell(1, LastColumn());
  EXPECT_EQ(Ticks(1), ".x");
}

}  // namespace
}  // namespace mirelo::testing
