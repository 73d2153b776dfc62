#include "adapters/qt/grid_view.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "adapters/qt/grid_cell.h"
#include "adapters/qt/text.h"
#include "adapters/qt/twips.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"

namespace mirelo::qt {

namespace {

// A header whose texts end in dots where their column is too narrow. The whole text is its tool tip.
class Header final : public QHeaderView {
 public:
  explicit Header(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

 protected:
  void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
    QHeaderView::initStyleOptionForIndex(option, section);
    const int room = sectionSize(section) - 2 * style()->pixelMetric(QStyle::PM_HeaderMargin);
    option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight, room);
  }
};

}  // namespace

GridView::GridView(forms::Grid& grid, QtLoop& loop) : grid_(grid), model_(grid, loop) {
  setModel(&model_);
  setItemDelegate(new GridCell(model_, this));
  setSelectionMode(QAbstractItemView::NoSelection);
  setEditTriggers(QAbstractItemView::AnyKeyPressed);  // of those that this view lets through
  setTabKeyNavigation(false);
  setAlternatingRowColors(true);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setWordWrap(false);

  setHorizontalHeader(new Header(this));
  QHeaderView& top = *horizontalHeader();
  top.setHighlightSections(false);
  top.setSectionsClickable(true);
  top.setMinimumSectionSize(fontMetrics().averageCharWidth() * 2);
  QHeaderView& side = *verticalHeader();
  side.setHighlightSections(false);
  side.setSectionsClickable(true);
  side.setSectionResizeMode(QHeaderView::Fixed);
  side.setDefaultSectionSize(fontMetrics().height() + 8);
  side.setMinimumWidth(fontMetrics().height() + 8);

  connect(&top, &QHeaderView::sectionClicked, this,
          [this](int section) { Act([&] { grid_.UserClickCell(0, model_.GridColumn(section)); }); });
  connect(&side, &QHeaderView::sectionClicked, this,
          [this](int section) { Act([&] { grid_.UserClickCell(model_.GridRow(section), 0); }); });
  connect(&top, &QHeaderView::sectionResized, this, [this](int section, int, int width) {
    if (showing_columns_) return;
    Act([&] { grid_.UserResizeColumn(model_.GridColumn(section), TwipsOf(width, *this)); });
  });
  connect(&top, &QHeaderView::sectionHandleDoubleClicked, this,
          [this](int section) { resizeColumnToContents(section); });
}

void GridView::Invalidate() {
  if (std::exchange(out_of_date_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { Update(); }, Qt::QueuedConnection);
}

void GridView::selectAll() {
  Act([this] { grid_.UserClickCell(0, 0); });
}

// A click counts when the mouse is released on the cell that it was pressed on. Released on another cell, it
// has dragged a selection, of which the grid learns only then: it acts on selections.
void GridView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  Update();
  pressed_ = dragged_to_ = PlaceAt(event->position().toPoint());
  if (pressed_ != Place()) ShowSelection(pressed_, pressed_);
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
  if (pressed_ == Place() || (event->buttons() & Qt::LeftButton) == 0) return;
  if (const Place place = PlaceAt(event->position().toPoint()); place != Place()) dragged_to_ = place;
  ShowSelection(pressed_, dragged_to_);
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || pressed_ == Place()) return;
  const Place from = std::exchange(pressed_, Place());
  const Place to = dragged_to_;
  Act([&] {
    if (from == to) return grid_.UserClickCell(from.row, from.col);
    grid_.UserMoveTo(from.row, from.col);
    grid_.UserDragTo(to.row, to.col);
  });
}

// The second press of two: on a text it opens the cell, on a check cell it is a press like the first.
void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
  Update();
  const Place place = PlaceAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && place != Place()) {
    Act([&] { grid_.UserMoveTo(place.row, place.col); });
    if (Edit(nullptr)) return;
  }
  mousePressEvent(event);
}

void GridView::keyPressEvent(QKeyEvent* event) {
  Update();
  const bool extends = (event->modifiers() & Qt::ShiftModifier) != 0;
  const Place from = extends ? Place{grid_.RowSel(), grid_.ColSel()} : Place{grid_.Row(), grid_.Col()};
  if (const Place to = Reached(event->key(), from); to != Place()) {
    return Act([&] { extends ? grid_.UserExtendTo(to.row, to.col) : grid_.UserMoveTo(to.row, to.col); });
  }
  if (event->key() == Qt::Key_Space) {
    return Act([this] { grid_.UserToggle(); });
  }
  const bool types = !event->text().isEmpty() && event->text().at(0).isPrint() &&
                     (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
  if (event->key() == Qt::Key_F2 && Edit(nullptr)) return;
  if (types && Edit(event)) return;
  event->ignore();  // Enter and Escape are the form's
}

void GridView::Update() {
  if (!std::exchange(out_of_date_, false)) return;
  model_.Refresh();
  verticalHeader()->setVisible(grid_.FixedCols() > 0);
  ShowColumns();
  const Place active{grid_.Row(), grid_.Col()};
  if (pressed_ == Place()) ShowSelection(active, {grid_.RowSel(), grid_.ColSel()});
  if (std::exchange(shown_active_, active) != active) scrollTo(CellOf(active));
}

void GridView::ShowColumns() {
  showing_columns_ = true;
  for (int column = 0; column < model_.columnCount(); ++column) {
    if (const int width = WidthOf(column); columnWidth(column) != width) setColumnWidth(column, width);
  }
  showing_columns_ = false;
}

// The grid keeps its width: what is stored of it says whether somebody has chosen one.
int GridView::WidthOf(int column) const {
  const std::int32_t twips = grid_.ColWidth(model_.GridColumn(column));
  const int width = PixelsOf(twips, *this);
  const bool is_chosen = std::ranges::find(usual_widths_, twips) == usual_widths_.end();
  return is_chosen ? width : std::max(width, horizontalHeader()->sectionSizeHint(column));
}

// The header row is the active one as long as there is no other: then nothing is selected.
void GridView::ShowSelection(Place from, Place to) {
  QItemSelectionModel& selection = *selectionModel();
  const QModelIndex active = CellOf(from);
  const QModelIndex other = CellOf(to);
  if (!active.isValid() || !other.isValid()) return selection.clear();
  const QItemSelection cells(
      model_.index(std::min(active.row(), other.row()), std::min(active.column(), other.column())),
      model_.index(std::max(active.row(), other.row()), std::max(active.column(), other.column())));
  selection.select(cells, QItemSelectionModel::ClearAndSelect);
  selection.setCurrentIndex(active, QItemSelectionModel::NoUpdate);
}

// A grid that has been given no column yet has its first one active, which may be a fixed one.
QModelIndex GridView::CellOf(Place place) const {
  return model_.index(model_.TableRow(place.row), std::max(0, model_.TableColumn(place.col)));
}

GridView::Place GridView::PlaceAt(QPoint position) const {
  const QModelIndex cell = indexAt(position);
  return cell.isValid() ? Place{model_.GridRow(cell.row()), model_.GridColumn(cell.column())} : Place();
}

// Where a key leads to; nowhere when it is none that moves, or there is no cell.
GridView::Place GridView::Reached(int key, Place from) const {
  const std::int32_t first_row = grid_.FixedRows(), last_row = grid_.Rows() - 1;
  const std::int32_t first_col = grid_.FixedCols(), last_col = grid_.Cols() - 1;
  if (last_row < first_row || last_col < first_col) return {};
  const int page = std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize() - 1);
  switch (key) {
    case Qt::Key_Up:
      --from.row;
      break;
    case Qt::Key_Down:
      ++from.row;
      break;
    case Qt::Key_Left:
      --from.col;
      break;
    case Qt::Key_Right:
      ++from.col;
      break;
    case Qt::Key_PageUp:
      from.row -= page;
      break;
    case Qt::Key_PageDown:
      from.row += page;
      break;
    case Qt::Key_Home:
      from.row = first_row;
      break;
    case Qt::Key_End:
      from.row = last_row;
      break;
    default:
      return {};
  }
  return {std::clamp(from.row, first_row, last_row), std::clamp(from.col, first_col, last_col)};
}

// Opens the active cell for a new text, if it takes one. A key that was typed is the text's first.
bool GridView::Edit(QEvent* typed) {
  bool may = false;
  Act([&] { may = grid_.UserMayEdit(); });
  if (!may) return false;
  return edit(currentIndex(), QAbstractItemView::AnyKeyPressed, typed);
}

void GridView::Act(const std::function<void()>& act) {
  view_->Act(act);
  Update();
}

QWidget* MakeWidget(forms::Grid& grid, Views& views) {
  auto* widget = new GridView(grid, views.loop());
  widget->Follow(views.Add(grid, *widget, [&grid, widget] {
    ShowState(grid, *widget);
    widget->Invalidate();
  }));
  return widget;
}

}  // namespace mirelo::qt
