#include "forms/grid_fixture.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

class GridAction : public GridTest {};

TEST_F(GridAction, SelectsWhatIsClicked) {
  const struct {
    const char* what;
    std::int32_t row, col;
    std::vector<std::int32_t> selection;
  } kClicks[] = {{"a cell", 2, 1, {2, 1, 2, 1}},
                 {"a header cell selects its column", 0, 2, {1, 2, 3, 2}},
                 {"the first header that is not fixed", 0, 1, {1, 1, 3, 1}},
                 {"a fixed cell selects its row", 2, 0, {2, 1, 2, 3}},
                 {"the corner selects everything", 0, 0, {1, 1, 3, 3}}};
  for (const auto& click : kClicks) {
    SCOPED_TRACE(click.what);
    raised.clear();
    grid.UserClickCell(click.row, click.col);
    EXPECT_THAT(Selection(), ElementsAreArray(click.selection));
    EXPECT_THAT(raised, ElementsAre("Click"));
    EXPECT_TRUE(grid.HasFocus());
  }
}

TEST_F(GridAction, SelectsBeforeClickIsRaised) {
  std::vector<std::int32_t> at_click;
  grid.Click.Subscribe([&] { at_click = Selection(); });
  grid.UserClickCell(0, 2);
  EXPECT_THAT(at_click, ElementsAre(1, 2, 3, 2));
}

TEST_F(GridAction, SelectsOneCellByTheHeaderOfOneRow) {
  grid.Rows(2);
  grid.UserClickCell(0, 2);
  EXPECT_THAT(Selection(), ElementsAre(1, 2, 1, 2));
}

TEST_F(GridAction, SelectsByTheHeaderWithoutFixedColumns) {
  grid.FixedCols(0);
  grid.UserClickCell(0, 0);
  EXPECT_THAT(Selection(), ElementsAre(1, 0, 3, 0));
  grid.UserClickCell(2, 0);
  EXPECT_THAT(Selection(), ElementsAre(2, 0, 2, 0));
}

TEST_F(GridAction, LeavesTheSelectionWhereThereIsNothingToSelect) {
  grid.Rows(1);
  const auto before = Selection();
  grid.UserClickCell(0, 2);
  EXPECT_EQ(Selection(), before);
  EXPECT_THAT(raised, ElementsAre("Click"));
  grid.Rows(3);
  grid.FixedCols(4);
  grid.UserClickCell(1, 2);
  EXPECT_EQ(Selection(), before);
}

TEST_F(GridAction, TogglesACheckCellBetweenBeforeAndAfterEditAndThenClicks) {
  grid.UserClickCell(2, 3);
  EXPECT_THAT(raised, ElementsAre("BeforeEdit 2,3 ''", "AfterEdit 2,3 '-1'", "Click"));
  raised.clear();
  grid.UserClickCell(2, 3);
  EXPECT_THAT(raised, ElementsAre("BeforeEdit 2,3 '-1'", "AfterEdit 2,3 '0'", "Click"));
  raised.clear();
  grid.UserClickCell(2, 3);
  EXPECT_THAT(raised, ElementsAre("BeforeEdit 2,3 '0'", "AfterEdit 2,3 '-1'", "Click"));
  EXPECT_THAT(Selection(), ElementsAre(2, 3, 2, 3));
}

TEST_F(GridAction, TakesAnyOtherTextOfACheckCellForATick) {
  for (const char* text : {"-1", "True", "1", " "}) {
    SCOPED_TRACE(text);
    grid.TextMatrix(1, 2, text);
    grid.UserClickCell(1, 2);
    EXPECT_EQ(grid.TextMatrix(1, 2), "0");
  }
}

TEST_F(GridAction, KeepsACheckCellWhoseEditIsCanceled) {
  grid.BeforeEdit.Subscribe([](std::int32_t, std::int32_t, bool& cancel) { cancel = true; });
  grid.UserClickCell(2, 3);
  EXPECT_EQ(grid.TextMatrix(2, 3), "");
  EXPECT_THAT(raised, ElementsAre("BeforeEdit 2,3 ''", "Click"));
}

TEST_F(GridAction, KeepsCheckCellsOfAGridThatCannotBeEdited) {
  grid.Editable(0);
  grid.UserClickCell(2, 3);
  grid.UserToggle();
  EXPECT_EQ(grid.TextMatrix(2, 3), "");
  EXPECT_THAT(raised, ElementsAre("Click"));
}

TEST_F(GridAction, TogglesNoFixedCellAndNoText) {
  grid.ColDataType(0, forms::Grid::kBooleanColumn);
  grid.UserClickCell(1, 0);
  grid.UserClickCell(0, 2);
  grid.UserClickCell(1, 1);
  EXPECT_THAT(raised, ElementsAre("Click", "Click", "Click"));
  EXPECT_THAT(Texts(2), ElementsAre("Last", "", "", ""));
}

TEST_F(GridAction, TogglesTheActiveCheckCellByTheBlankKeyWithoutAClick) {
  grid.Select(3, 2);
  grid.UserToggle();
  EXPECT_THAT(raised, ElementsAre("BeforeEdit 3,2 ''", "AfterEdit 3,2 '-1'"));
  raised.clear();
  grid.Select(3, 1);
  grid.UserToggle();
  grid.Select(0, 2);
  grid.UserToggle();
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(GridAction, EditsTheTextOfTheActiveCell) {
  grid.Select(2, 1);
  grid.UserEditCell("ORCL");
  EXPECT_THAT(raised, ElementsAre("BeforeEdit 2,1 'IBM'", "AfterEdit 2,1 'ORCL'"));
  EXPECT_THAT(Texts(1), ElementsAre("Ticker", "MSFT", "ORCL", "AAPL"));
}

TEST_F(GridAction, EditsNoCheckCellNoFixedCellAndNothingThatIsCanceledOrOff) {
  grid.Select(2, 2);
  grid.UserEditCell("x");
  grid.Select(0, 1);
  grid.UserEditCell("x");
  grid.Select(2, 0);
  grid.UserEditCell("x");
  EXPECT_THAT(raised, IsEmpty());
  grid.Select(2, 1);
  grid.Editable(0);
  grid.UserEditCell("x");
  EXPECT_THAT(raised, IsEmpty());
  grid.Editable(1);
  grid.BeforeEdit.Subscribe([](std::int32_t, std::int32_t, bool& cancel) { cancel = true; });
  grid.UserEditCell("x");
  EXPECT_THAT(raised, ElementsAre("BeforeEdit 2,1 'IBM'"));
  EXPECT_THAT(Texts(1), ElementsAre("Ticker", "MSFT", "IBM", "AAPL"));
}

TEST_F(GridAction, ExtendsTheSelectionFromTheActiveCellByDragging) {
  grid.UserClickCell(1, 1);
  raised.clear();
  grid.UserDragTo(3, 2);
  EXPECT_THAT(Selection(), ElementsAre(1, 1, 3, 2));
  grid.UserDragTo(2, 1);
  EXPECT_THAT(Selection(), ElementsAre(1, 1, 2, 1));
  EXPECT_THAT(raised, ElementsAre("Click", "Click"));
}

TEST_F(GridAction, DragsUpwardsFromTheActiveCell) {
  grid.UserClickCell(3, 1);
  grid.UserDragTo(1, 1);
  EXPECT_THAT(Selection(), ElementsAre(3, 1, 1, 1));
}

TEST_F(GridAction, DoesNotDragOntoFixedCells) {
  grid.UserClickCell(1, 1);
  grid.UserDragTo(0, 1);
  grid.UserDragTo(1, 0);
  EXPECT_THAT(Selection(), ElementsAre(1, 1, 1, 1));
}

TEST_F(GridAction, IgnoresWhatLiesOutsideTheGrid) {
  for (const auto& [row, col] : {std::pair{-1, 1}, {4, 1}, {1, -1}, {1, 4}}) {
    grid.UserClickCell(row, col);
    grid.UserDragTo(row, col);
  }
  grid.UserResizeColumn(-1, 100);
  grid.UserResizeColumn(4, 100);
  EXPECT_THAT(raised, IsEmpty());
  EXPECT_THAT(Selection(), ElementsAre(1, 1, 1, 1));
}

TEST_F(GridAction, ResizesColumnsButNotBelowZero) {
  grid.UserResizeColumn(1, 1234);
  grid.UserResizeColumn(2, 0);
  grid.UserResizeColumn(3, -1);
  EXPECT_EQ(grid.ColWidth(1), 1234);
  EXPECT_EQ(grid.ColWidth(2), 0);
  EXPECT_EQ(grid.ColWidth(3), grid.ColWidth(0));
}

TEST_F(GridAction, OnAnEmptyGridDoesNothing) {
  forms::Grid empty(form, "empty", nullptr);
  empty.Editable(1);
  empty.UserClickCell(0, 0);
  empty.UserDragTo(0, 0);
  empty.UserToggle();
  empty.UserEditCell("x");
  EXPECT_EQ(empty.Rows(), 0);
  EXPECT_FALSE(empty.HasFocus());
}

// What a handler does to the grid under the click is the handler's business, as long as nothing breaks.
TEST_F(GridAction, SurvivesAHandlerThatTakesTheCellAway) {
  grid.BeforeEdit.Subscribe([&](std::int32_t, std::int32_t, bool& cancel) {
    grid.Rows(2);
    cancel = true;
  });
  grid.UserClickCell(3, 2);
  EXPECT_THAT(Selection(), ElementsAre(1, 2, 1, 2));
  EXPECT_THAT(raised, ElementsAre("BeforeEdit 3,2 ''", "Click"));
}

}  // namespace
}  // namespace mirelo::testing
