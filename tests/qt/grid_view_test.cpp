// A grid as a person uses it.

#include "adapters/qt/grid_view.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QLineEdit>
#include <array>

#include "forms/grid.h"
#include "qt/gui_test.h"

namespace mirelo::qt {
namespace {

using Words = std::vector<std::string>;

// Three tickers, with a fixed column in front of them and two columns of check cells behind.
class Quotes : public forms::Form {
 public:
  Quotes() : Form("Quotes", "Quotes") {
    Design(9000, 6000, Border::Sizable);
    grid.Editable(1);
    grid.FormatString("= |Ticker|Last|Charts");
    grid.Rows(4);
    grid.FixedCols(1);
    for (const int col : {2, 3}) grid.ColDataType(col, forms::Grid::kBooleanColumn);
    const char* tickers[] = {"IBM", "MSFT", "AAPL"};
    for (int row = 1; row <= 3; ++row) grid.TextMatrix(row, 1, tickers[row - 1]);
  }
  forms::Grid grid{*this, "grid", nullptr};
};

class GridOnScreen : public GuiTest {
 protected:
  // Of the grid's own numbers.
  QPoint PlaceOf(int row, int col) {
    auto* view = Find<GridView>("grid");
    return view->visualRect(view->model()->index(row - 1, col - 1)).center();
  }
  void ClickCell(int row, int col) { person.Click(Find<GridView>("grid")->viewport(), PlaceOf(row, col)); }
  void ClickHeader(int col) {
    QHeaderView* header = Find<GridView>("grid")->horizontalHeader();
    person.Click(header->viewport(),
                 QPoint(header->sectionViewportPosition(col - 1) + header->sectionSize(col - 1) / 2,
                        header->height() / 2));
  }
  void ClickSide(int row) {
    QHeaderView* header = Find<GridView>("grid")->verticalHeader();
    person.Click(header->viewport(),
                 QPoint(header->width() / 2, header->sectionViewportPosition(row - 1) + 5));
  }
  std::array<int, 4> Selection() const {
    return {form.grid.Row(), form.grid.Col(), form.grid.RowSel(), form.grid.ColSel()};
  }
  using Cells = std::array<int, 4>;

  Quotes form;
};

TEST_F(GridOnScreen, ShowsHeadersTextsAndTicks) {
  form.grid.TextMatrix(2, 3, "-1");
  person.Does("look", [&] {
    const QAbstractItemModel& model = *Find<GridView>("grid")->model();
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.columnCount(), 3);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal), QLatin1String("Ticker"));
    EXPECT_EQ(model.index(1, 0).data(), QLatin1String("MSFT"));
    EXPECT_EQ(model.index(1, 2).data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_EQ(model.index(0, 2).data(Qt::CheckStateRole), Qt::Unchecked);
    EXPECT_FALSE(model.index(1, 0).data(Qt::CheckStateRole).isValid());
  });
  Show(form);
}

TEST_F(GridOnScreen, ClickSelectsACellAndOnACheckCellTogglesIt) {
  Words log;
  form.grid.BeforeEdit.Subscribe([&](int, int, bool&) { log.push_back("before"); });
  form.grid.AfterEdit.Subscribe([&](int, int) { log.push_back("after"); });
  form.grid.Click.Subscribe([&] { log.push_back("click"); });
  person.Does("click a text and a box", [&] {
    ClickCell(2, 1);
    EXPECT_EQ(Selection(), (Cells{2, 1, 2, 1}));
    ClickCell(3, 2);
    EXPECT_EQ(Selection(), (Cells{3, 2, 3, 2}));
  });
  Show(form);
  EXPECT_EQ(log, (Words{"click", "before", "after", "click"}));
  EXPECT_EQ(form.grid.TextMatrix(3, 2), "-1");
}

TEST_F(GridOnScreen, TwoQuickClicksToggleTwice) {
  person.Does("click twice", [&] { person.DoubleClick(Find<GridView>("grid")->viewport(), PlaceOf(1, 2)); });
  Show(form);
  EXPECT_EQ(form.grid.TextMatrix(1, 2), "0");
}

TEST_F(GridOnScreen, BlankKeyTogglesTheActiveCheckCell) {
  person.Does("move and toggle", [&] {
    ClickCell(1, 1);
    person.Press(Qt::Key_Right);
    person.Press(Qt::Key_Down);
    person.Press(Qt::Key_Space);
  });
  Show(form);
  EXPECT_EQ(form.grid.TextMatrix(2, 2), "-1");
}

TEST_F(GridOnScreen, HeadersSelectWhatTheyHead) {
  person.Does("click the headers", [&] {
    ClickHeader(2);
    EXPECT_EQ(Selection(), (Cells{1, 2, 3, 2}));
    ClickSide(2);
    EXPECT_EQ(Selection(), (Cells{2, 1, 2, 3}));
  });
  person.Does("click the corner", [&] {
    person.Click(Find<GridView>("grid")->findChild<QAbstractButton*>());
    EXPECT_EQ(Selection(), (Cells{1, 1, 3, 3}));
  });
  Show(form);
}

TEST_F(GridOnScreen, DraggingSelectsARectangleWithOneClickAtItsEnd) {
  int clicks = 0;
  form.grid.Click.Subscribe([&] { ++clicks; });
  person.Does("drag", [&] { person.Drag(Find<GridView>("grid")->viewport(), PlaceOf(1, 2), PlaceOf(3, 3)); });
  Show(form);
  EXPECT_EQ(Selection(), (Cells{1, 2, 3, 3}));
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(form.grid.TextMatrix(1, 2), "") << "a cell that a drag begins in is not toggled";
}

TEST_F(GridOnScreen, KeysMoveTheActiveCellAndExtendTheSelection) {
  struct Case {
    const char* name;
    Qt::Key key;
    Qt::KeyboardModifiers with;
    Cells selection;
  };
  const Case cases[] = {
      {"down", Qt::Key_Down, {}, {2, 1, 2, 1}},
      {"left, at the edge", Qt::Key_Left, {}, {2, 1, 2, 1}},
      {"right", Qt::Key_Right, {}, {2, 2, 2, 2}},
      {"up", Qt::Key_Up, {}, {1, 2, 1, 2}},
      {"up, at the edge", Qt::Key_Up, {}, {1, 2, 1, 2}},
      {"end", Qt::Key_End, {}, {3, 2, 3, 2}},
      {"shift up", Qt::Key_Up, Qt::ShiftModifier, {3, 2, 2, 2}},
      {"shift right", Qt::Key_Right, Qt::ShiftModifier, {3, 2, 2, 3}},
      {"home", Qt::Key_Home, {}, {1, 2, 1, 2}},
      {"page down", Qt::Key_PageDown, {}, {3, 2, 3, 2}},
  };
  form.grid.Click.Subscribe([] { ADD_FAILURE() << "keys raise no click"; });
  person.Does("press keys", [&] {
    form.grid.Row(1);
    form.grid.Select(1, 1);
    Find("grid")->setFocus();
    for (const Case& c : cases) {
      SCOPED_TRACE(c.name);
      person.Press(c.key, c.with);
      EXPECT_EQ(Selection(), c.selection);
    }
  });
  Show(form);
}

TEST_F(GridOnScreen, ShowsTheActiveRowOfAGridThatWasGivenNoColumn) {
  person.Does("select a row", [&] { form.grid.Row(2); });
  person.Does("look", [&] {
    auto* view = Find<GridView>("grid");
    EXPECT_EQ(view->currentIndex(), view->model()->index(1, 0));
  });
  Show(form);
  EXPECT_EQ(form.grid.Col(), 0) << "the model's own is left alone";
}

TEST_F(GridOnScreen, ShowsTheSelectionOfItsModel) {
  person.Does("select", [&] { form.grid.Select(1, 2, 3, 2); });
  person.Does("look", [&] {
    auto* view = Find<GridView>("grid");
    const QItemSelection selected = view->selectionModel()->selection();
    ASSERT_EQ(selected.size(), 1);
    EXPECT_EQ(selected.front().topLeft(), view->model()->index(0, 1));
    EXPECT_EQ(selected.front().bottomRight(), view->model()->index(2, 1));
    EXPECT_EQ(view->currentIndex(), view->model()->index(0, 1));
  });
  Show(form);
}

TEST_F(GridOnScreen, ColumnsAreAsWideAsTheModelSaysAndThePersonMakesThem) {
  int pixels = 0;
  person.Does("look", [&] { form.grid.ColWidth(1, 3000); });
  person.Does("drag the border", [&] {
    auto* view = Find<GridView>("grid");
    pixels = view->columnWidth(0);
    QHeaderView* header = view->horizontalHeader();
    const QPoint border(header->sectionViewportPosition(0) + pixels - 2, header->height() / 2);
    person.Drag(header->viewport(), border, border + QPoint(30, 0));
    EXPECT_EQ(view->columnWidth(0), pixels + 30);
  });
  Show(form);
  EXPECT_NEAR(form.grid.ColWidth(1), 3000.0 * (pixels + 30) / pixels, 16);
  EXPECT_EQ(form.grid.ColWidth(2), 960) << "the others keep theirs";
}

TEST_F(GridOnScreen, FollowsRowsAndColumnsThatComeAndGo) {
  person.Does("change the size", [&] {
    form.grid.Rows(6);
    form.grid.TextMatrix(5, 1, "GE");
    form.grid.RemoveItem(1);
  });
  person.Does("look", [&] {
    const QAbstractItemModel& model = *Find<GridView>("grid")->model();
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_EQ(model.index(3, 0).data(), QLatin1String("GE"));
    form.grid.FixedCols(0);
    form.grid.Cols(1);
    form.grid.FormatString("= Ticker");
  });
  person.Does("look again", [&] {
    auto* view = Find<GridView>("grid");
    EXPECT_EQ(view->model()->columnCount(), 1);
    EXPECT_EQ(view->model()->headerData(0, Qt::Horizontal), QLatin1String("Ticker"));
    EXPECT_FALSE(view->verticalHeader()->isVisible());
    form.grid.Rows(1);
  });
  person.Does("look at the empty one", [&] {
    EXPECT_EQ(Find<GridView>("grid")->model()->rowCount(), 0);
    person.Press(Qt::Key_Down);
    person.Press(Qt::Key_Space);
  });
  Show(form);
}

TEST_F(GridOnScreen, TextsAreEditedInPlaceUnlessTheFormCancels) {
  bool cancels = false;
  form.grid.BeforeEdit.Subscribe([&](int, int, bool& cancel) { cancel = cancels; });
  person.Does("type over a text", [&] {
    ClickCell(1, 1);
    person.Type("GE");
    person.Press(Qt::Key_Return);
  });
  person.Does("try again", [&] {
    EXPECT_EQ(form.grid.TextMatrix(1, 1), "GE");
    cancels = true;
    ClickCell(2, 1);
    person.Type("x");
    EXPECT_EQ(Find<GridView>("grid")->findChild<QLineEdit*>(), nullptr) << "nothing to type into";
    person.Press(Qt::Key_F2);
    person.DoubleClick(Find<GridView>("grid")->viewport(), PlaceOf(2, 1));
  });
  Show(form);
  EXPECT_EQ(form.grid.TextMatrix(2, 1), "MSFT");
}

TEST_F(GridOnScreen, EscapeAndEnterAreTheForms) {
  forms::Grid& grid = form.grid;
  int closed = 0;
  person.Does("press", [&] {
    ClickCell(1, 1);
    closed = 1;
    person.Press(Qt::Key_Escape);
    person.Press(Qt::Key_Return);
  });
  Show(form);
  EXPECT_EQ(closed, 1);
  EXPECT_EQ(grid.Row(), 1);
}

TEST_F(GridOnScreen, KeepsTheActiveCellInSight) {
  form.grid.Rows(500);
  person.Does("select the last row", [&] { form.grid.Row(499); });
  person.Does("look", [&] {
    auto* view = Find<GridView>("grid");
    EXPECT_TRUE(view->viewport()->rect().contains(PlaceOf(499, 1)));
  });
  Show(form);
}

}  // namespace
}  // namespace mirelo::qt
