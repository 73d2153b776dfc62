// Which columns the grid has in each mode, and how wide they are.

#include <cstdint>
#include <set>
#include <string_view>
#include <vector>

#include "dialog/vertical_grid_test.h"
#include "forms/layout/layouts.h"

namespace mirelo::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAreArray;

constexpr const char* kCharts = "Charts (Last & Volume)";
constexpr int kTickCells = 11;

// The part of that control; null where there is none.
const forms::layout::Part* Find(const forms::layout::Part& part, std::string_view control) {
  if (part.name == control) return &part;
  for (const auto& inner : part.parts) {
    if (const auto* const found = Find(inner, control)) return found;
  }
  return nullptr;
}

class GridLayout : public VerticalGridTest {
 protected:
  ~GridLayout() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  static void SaveWidth(const char* header, std::int32_t width) {
    mGlobal::AppSettings().SaveSetting("Settings\\WidthField", header, Variant(width));
  }
  std::vector<std::int32_t> Widths() const {
    std::vector<std::int32_t> widths;
    for (std::int32_t col = 0; col < FG.Cols(); ++col) widths.push_back(FG.ColWidth(col));
    return widths;
  }
};

TEST_F(GridLayout, WithoutVerticalTablesIsOneColumnOfTickers) {
  Save("VerticalTable", 0);
  OpenWithCharts("Last,LastVolume", {"A"});
  EXPECT_THAT(Headers(), ElementsAre("Ticker"));
  EXPECT_EQ(FG.FixedCols(), 0);
  EXPECT_EQ(FG.Editable(), 0);
}

TEST_F(GridLayout, WithVerticalTablesHasATickCellForEachField) {
  Open("Last,Bid,Ask", {"A"});
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "Bid", "Ask"));
  EXPECT_EQ(FG.FixedCols(), 1);
  EXPECT_EQ(FG.Editable(), 1);
  EXPECT_NE(FG.ColDataType(1), kTickCells);
  for (std::int32_t col = 2; col < FG.Cols(); ++col) EXPECT_EQ(FG.ColDataType(col), kTickCells);
}

TEST_F(GridLayout, LeavesOutFieldsThatAVerticalTableCannotShow) {
  Open("Tick,Last,52w Low,52w High,Bid", {});
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "Bid"));
}

TEST_F(GridLayout, EndsWithTheColumnOfChartsWhileChartsAreOn) {
  OpenWithCharts("Last,LastVolume", {});
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "LastVolume", kCharts));
  EXPECT_EQ(FG.ColDataType(LastColumn()), kTickCells);
}

TEST_F(GridLayout, IsTheTickersAloneWithoutAField) {
  Open("Tick", {"A"});
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker"));
  EXPECT_THAT(Tickers(), ElementsAre("A"));
}

// Widths

TEST_F(GridLayout, HasItsOwnWidthsUntilTheUserChangesThem) {
  Open("Last,Bid", {});
  EXPECT_THAT(Widths(), ElementsAre(Widths()[0], 1700, 800, 800));
}

// A window shows such a column as wide as its header at least, and any other as wide as the person made it.
TEST_F(GridLayout, HasTheWidthsThatItsWindowTakesForNobodysChoice) {
  Open("Last", {});
  const auto widths = Widths();
  const auto layout = forms::layout::LayoutOfSettingsDialog();
  const auto* const grid = Find(layout.at("C1ElaTickers"), "FG");
  ASSERT_NE(grid, nullptr);
  EXPECT_THAT(grid->usual_widths,
              UnorderedElementsAreArray(std::set<std::int32_t>(widths.begin(), widths.end())));
}

TEST_F(GridLayout, MakesTheColumnOfChartsAsWideAsAField) {
  OpenWithCharts("Last", {});
  EXPECT_EQ(FG.ColWidth(LastColumn()), 800);
}

TEST_F(GridLayout, TakesStoredWidthsByTheirHeaders) {
  SaveWidth("Ticker", 1000);
  SaveWidth("Bid", 333);
  SaveWidth(kCharts, 444);
  OpenWithCharts("Last,Bid", {});
  EXPECT_THAT(Widths(), ElementsAre(Widths()[0], 1000, 800, 333, 444));
}

TEST_F(GridLayout, TakesTheTickersWidthInItsOneColumnToo) {
  Save("VerticalTable", 0);
  Open("", {});
  EXPECT_THAT(Widths(), ElementsAre(1700));
  SaveWidth("Ticker", 1000);
  form.Activate();
  EXPECT_THAT(Widths(), ElementsAre(1000));
}

TEST_F(GridLayout, KeepsAWidthThatTheUserChangesThroughAChangeOfMode) {
  Open("Last", {});
  FG.UserResizeColumn(2, 555);
  form.chkVerTable.UserClick();
  form.chkVerTable.UserClick();
  EXPECT_EQ(FG.ColWidth(2), 555);
  EXPECT_EQ(StoredWidth("Last"), Variant(555));
}

TEST_F(GridLayout, AsksAgainForAWidthThatCouldNotBeRead) {
  SaveWidth("Ticker", 1000);
  Save("VerticalTable", 0);
  Open("", {});
  FG.ColWidth(0, 5);
  registry.Raise("RegQueryValueExA");
  Answers({"RETRY"});
  form.FGVertical(false);
  EXPECT_THAT(desktop.reports[0].text, ::testing::HasSubstr("\tin Mirelo.frmMirelo.FGVertical at line 0"));
  EXPECT_EQ(FG.ColWidth(0), 1000);
}

TEST_F(GridLayout, KeepsTheWidthWhenThatFailureIsIgnoredAndGoesOn) {
  Open("Last", {});
  FG.ColWidth(1, 5);
  FG.ColWidth(2, 5);
  registry.Raise("RegOpenKeyExA");
  Answers({"IGNORE"});
  form.FGVertical(false);
  EXPECT_EQ(FG.ColWidth(1), 5);
  EXPECT_EQ(FG.ColWidth(2), 800);
}

// From one mode to the other

TEST_F(GridLayout, KeepsTheTickersWhenTheModeChanges) {
  Open("Last,Bid", {"A", "B"});
  form.chkVerTable.UserClick();
  EXPECT_THAT(TextsOfColumn(0), ElementsAre("A", "B"));
  EXPECT_THAT(Headers(), ElementsAre("Ticker"));
  form.chkVerTable.UserClick();
  EXPECT_THAT(TextsOfColumn(1), ElementsAre("A", "B"));
  EXPECT_THAT(TextsOfColumn(0), ElementsAre("", ""));
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "Bid"));
}

TEST_F(GridLayout, LosesTheTicksWhenTheModeChanges) {
  Open("Last,Bid", {"A", "B"});
  SetAllTicks({"xx", "-x"});
  form.chkVerTable.UserClick();
  form.chkVerTable.UserClick();
  EXPECT_THAT(AllTicks(), ElementsAre("..", ".."));
}

// The column of charts

TEST_F(GridLayout, GainsTheColumnOfChartsWithTheBox) {
  Open("Last,LastVolume", {"A", "B"});
  SetAllTicks({"x.", ".x"});
  ToggleCharts();
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "LastVolume", kCharts));
  EXPECT_THAT(AllTicks(), ElementsAre("x..", ".x."));
  EXPECT_THAT(Pictures(LastColumn()), Each("chart"));
  EXPECT_EQ(FG.Picture(0, LastColumn()), "");
  EXPECT_EQ(FG.ColDataType(LastColumn()), kTickCells);
}

TEST_F(GridLayout, LosesTheColumnOfChartsWithTheBox) {
  OpenWithCharts("Last,LastVolume", {"A"});
  SetTicks(1, "x-x");
  ToggleCharts();
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", "LastVolume"));
  EXPECT_THAT(AllTicks(), ElementsAre("x-"));
}

TEST_F(GridLayout, NeverHasTwoColumnsOfCharts) {
  OpenWithCharts("Last", {"A"});
  FG.TextMatrix(0, LastColumn(), UCase(kCharts));
  form.AddToFGColCharts();
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last", UCase(kCharts)));
}

TEST_F(GridLayout, StaysAsItIsWithoutAColumnOfChartsToDelete) {
  Open("Last", {"A"});
  form.DeleteFromFGColCharts();
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Last"));
}

TEST_F(GridLayout, ClosesTheGapOfAColumnOfChartsThatIsNotTheLast) {
  OpenWithCharts("Last,Bid", {"A", "B"});
  FG.TextMatrix(0, 2, LCase(kCharts));  // in the place of Last
  SetAllTicks({"x-x", "-x."});
  form.DeleteFromFGColCharts();
  EXPECT_THAT(Headers(), ElementsAre("", "Ticker", "Bid", kCharts));
  EXPECT_THAT(AllTicks(), ElementsAre("-x", "x."));
}

TEST_F(GridLayout, StaysOneColumnWhenChartsAreTurnedOnInPlainMode) {
  Save("VerticalTable", 0);
  Open("Last", {"A"});
  ToggleCharts();
  EXPECT_THAT(Headers(), ElementsAre("Ticker"));
}

TEST_F(GridLayout, GivesANewTickerThePictureOfCharts) {
  OpenWithCharts("Last,LastVolume", {"A", "B"});
  EXPECT_THAT(Pictures(LastColumn()), ElementsAre("chart", "chart"));
  EXPECT_THAT(Pictures(LastColumn() - 1), Each(""));
}

TEST_F(GridLayout, GivesANewTickerNoPictureWithoutCharts) {
  Open("Last,LastVolume", {"A"});
  FG.TextMatrix(0, LastColumn(), kCharts);
  Add({"B"});
  EXPECT_THAT(Pictures(LastColumn()), Each(""));
}

}  // namespace
}  // namespace mirelo::testing
