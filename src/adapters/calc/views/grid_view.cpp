#include "adapters/calc/views/grid_view.h"

#include <algorithm>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/MouseButton.hpp>
#include <com/sun/star/awt/XUnitConversion.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/awt/grid/DefaultGridColumnModel.hpp>
#include <com/sun/star/awt/grid/DefaultGridDataModel.hpp>
#include <com/sun/star/awt/grid/XGridColumn.hpp>
#include <com/sun/star/awt/grid/XGridRowSelection.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/style/HorizontalAlignment.hpp>
#include <com/sun/star/util/MeasureUnit.hpp>
#include <com/sun/star/view/SelectionType.hpp>
#include <cstdlib>
#include <memory>
#include <utility>

#include "adapters/calc/objects/office_text.h"
#include "adapters/calc/office_loop.h"
#include "adapters/calc/views/boxes_of_controls.h"
#include "adapters/calc/views/failure.h"
#include "adapters/calc/views/listeners.h"
#include "adapters/calc/views/pictures.h"
#include "forms/layout/measures.h"

namespace mirelo::calc {

namespace layout = forms::layout;

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;
using forms::Grid;
using forms::layout::Box;
using forms::layout::Extent;

namespace {

constexpr int kCellPicturePixels = 14;
constexpr int kAroundHeader = 10;
constexpr int kLettersOfGrid = 44;

css::style::HorizontalAlignment AlignmentOf(Grid::Alignment alignment, bool check) {
  if (check) return css::style::HorizontalAlignment_CENTER;
  switch (alignment) {
    case Grid::Alignment::Center:
      return css::style::HorizontalAlignment_CENTER;
    case Grid::Alignment::Right:
      return css::style::HorizontalAlignment_RIGHT;
    default:
      return css::style::HorizontalAlignment_LEFT;
  }
}

// Widths of columns are in the units of dialogs.
std::int32_t ToUnits(const View& view, std::int32_t pixels) {
  const Reference<css::awt::XUnitConversion> window(view.window->getPeer(), UNO_QUERY_THROW);
  return window->convertSizeToLogic({pixels, 0}, css::util::MeasureUnit::APPFONT).Width;
}

std::int32_t ToPixels(const View& view, std::int32_t units) {
  const Reference<css::awt::XUnitConversion> window(view.window->getPeer(), UNO_QUERY_THROW);
  return window->convertSizeToPixel({units, 0}, css::util::MeasureUnit::APPFONT).Width;
}

}  // namespace

GridView::GridView(Grid& grid, View& view, Views& views, std::vector<std::int32_t> usual_widths)
    : grid_(grid),
      view_(view),
      views_(views),
      usual_widths_(std::move(usual_widths)),
      columns_(css::awt::grid::DefaultGridColumnModel::create(views.context())),
      cells_(css::awt::grid::DefaultGridDataModel::create(views.context())) {
  view.Set("ShowColumnHeader", true);
  view.Set("SelectionModel", css::view::SelectionType_MULTI);
  view.Set("ColumnModel", columns_);
  view.Set("GridDataModel", Reference<css::awt::grid::XGridDataModel>(cells_, UNO_QUERY_THROW));
}

void GridView::Connect() {
  const auto window = view_.As<css::awt::XWindow>();
  window->addMouseListener(new OnRelease(views_.Heard([this](const auto& event) { Click(event); })));
  window->addKeyListener(new OnKeys(views_.Heard([this](const auto& event) { TakePressedKey(event); }),
                                    views_.Heard([this](const auto&) { FollowCursor(); })));
}

void GridView::Invalidate() {
  if (!view_.window.is() || std::exchange(out_of_date_, true)) return;
  const auto later = views_.Living([this](const auto&) { Update(); });
  views_.loop().StartTimer({}, [later] { later(0); });
}

void GridView::Update() {
  if (!std::exchange(out_of_date_, false)) return;
  try {
    showing_ = true;
    ShowColumns();
    ShowCells();
    ShowSelection();
    showing_ = false;
  } catch (const css::lang::DisposedException&) {
    showing_ = false;
  } catch (const css::uno::Exception& failure) {
    showing_ = false;
    throw ToolkitFailed(failure);
  }
}

GridView::Column GridView::ColumnOf(std::int32_t col) const {
  return {grid_.Rows() > 0 ? grid_.TextMatrix(0, col) : std::string(), WidthOf(col), grid_.ColAlignment(col),
          grid_.ColDataType(col) == Grid::kBooleanColumn};
}

// The grid keeps its width: what is stored of it says whether somebody has chosen one.
std::int32_t GridView::WidthOf(std::int32_t col) const {
  const std::int32_t twips = grid_.ColWidth(col);
  const std::int32_t width = views_.PixelsOf(twips);
  const bool is_chosen = std::ranges::find(usual_widths_, twips) == usual_widths_.end();
  if (is_chosen || grid_.Rows() == 0) return width;
  const auto letters = static_cast<std::int32_t>(grid_.TextMatrix(0, col).size());
  return std::max(width, letters * views_.LetterWidth() + 2 * kAroundHeader);
}

void GridView::ShowColumns() {
  std::vector<Column> wanted;
  for (std::int32_t col = grid_.FixedCols(); col < grid_.Cols(); ++col) wanted.push_back(ColumnOf(col));
  if (wanted == shown_columns_) return;
  view_.Set("ShowRowHeader", grid_.FixedCols() > 0);
  while (columns_->getColumnCount() > static_cast<sal_Int32>(wanted.size())) {
    columns_->removeColumn(columns_->getColumnCount() - 1);
  }
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const auto place = static_cast<sal_Int32>(i);
    const bool is_new = place >= columns_->getColumnCount();
    const Reference<css::awt::grid::XGridColumn> column =
        is_new ? columns_->createColumn() : columns_->getColumn(place);
    column->setTitle(OfficeText(wanted[i].title));
    column->setHorizontalAlign(AlignmentOf(wanted[i].alignment, wanted[i].check));
    column->setResizeable(true);
    column->setFlexibility(0);
    column->setColumnWidth(ToUnits(view_, wanted[i].width));
    if (!is_new) continue;
    columns_->addColumn(column);
    column->addGridColumnListener(new OnColumn(views_.Heard([this](const auto&) { TakeWidths(); })));
  }
  if (wanted.size() != shown_columns_.size()) shown_cells_.clear();  // rows have one value for each column
  shown_columns_ = std::move(wanted);
}

GridView::Cell GridView::CellOf(std::int32_t row, std::int32_t col) const {
  return {grid_.TextMatrix(row, col), grid_.Picture(row, col),
          grid_.ColDataType(col) == Grid::kBooleanColumn};
}

Any GridView::ValueOf(const Cell& cell) const {
  if (cell.check) {
    const bool ticked = !cell.text.empty() && cell.text != "0";
    return Any(views_.graphics().Of(CheckCellText(ticked, cell.picture, kCellPicturePixels)));
  }
  if (!cell.picture.empty() && cell.text.empty()) {
    return Any(views_.graphics().Of(PictureText(cell.picture, kCellPicturePixels)));
  }
  return Any(OfficeText(cell.text));
}

void GridView::ShowCells() {
  std::vector<std::vector<Cell>> wanted;
  for (std::int32_t row = grid_.FixedRows(); row < grid_.Rows(); ++row) {
    wanted.emplace_back();
    for (std::int32_t col = grid_.FixedCols(); col < grid_.Cols(); ++col) {
      wanted.back().push_back(CellOf(row, col));
    }
  }
  const bool anew = shown_cells_.empty() || shown_cells_.size() > wanted.size();
  if (anew) {
    cells_->removeAllRows();
    shown_cells_.clear();
  }
  for (std::size_t row = 0; row < wanted.size(); ++row) {
    if (row < shown_cells_.size() && shown_cells_[row] == wanted[row]) continue;
    Sequence<Any> values(static_cast<sal_Int32>(wanted[row].size()));
    for (std::size_t col = 0; col < wanted[row].size(); ++col) {
      const Any value = ValueOf(wanted[row][col]);
      values[static_cast<sal_Int32>(col)] = value;
      const bool is_there = row < shown_cells_.size();
      if (is_there && shown_cells_[row][col] != wanted[row][col]) {
        cells_->updateCellData(static_cast<sal_Int32>(col), static_cast<sal_Int32>(row), value);
      }
    }
    if (row >= shown_cells_.size()) cells_->addRow(Any(rtl::OUString()), values);
  }
  shown_cells_ = std::move(wanted);
}

void GridView::ShowSelection() {
  const Reference<css::awt::grid::XGridRowSelection> selection =
      view_.As<css::awt::grid::XGridRowSelection>();
  selection->deselectAllRows();
  const std::int32_t first = std::min(grid_.Row(), grid_.RowSel()) - grid_.FixedRows();
  const std::int32_t last = std::max(grid_.Row(), grid_.RowSel()) - grid_.FixedRows();
  const bool whole = std::abs(grid_.Col() - grid_.ColSel()) + 1 >= grid_.Cols() - grid_.FixedCols();
  if (first < 0 || last >= static_cast<std::int32_t>(shown_cells_.size())) return;
  const std::int32_t column = grid_.Col() - grid_.FixedCols();
  if (column >= 0)
    view_.As<css::awt::grid::XGridControl>()->goToCell(column, grid_.Row() - grid_.FixedRows());
  selection->deselectAllRows();
  if (!whole && first != last) return;
  for (std::int32_t row = first; row <= last; ++row) selection->selectRow(row);
}

// A click on the header above the first row has no row, as one below the last row has none.
void GridView::Click(const css::awt::MouseEvent& event) {
  if (event.Buttons != css::awt::MouseButton::LEFT) return;
  Update();
  const auto table = view_.As<css::awt::grid::XGridControl>();
  const std::int32_t row = table->getRowAtPoint(event.X, event.Y);
  const std::int32_t col = table->getColumnAtPoint(event.X, event.Y);
  const std::int32_t line = views_.LineHeight();
  if (row < 0 && event.Y > 2 * line) return;
  if (col < 0 && (grid_.FixedCols() == 0 || event.X > 4 * line)) return;
  Act([&] {
    grid_.UserClickCell(row < 0 ? 0 : row + grid_.FixedRows(), col < 0 ? 0 : col + grid_.FixedCols());
  });
}

void GridView::TakePressedKey(const css::awt::KeyEvent& event) {
  if (event.KeyCode == css::awt::Key::SPACE) Act([&] { grid_.UserToggle(); });
}

// The arrow keys have moved the table's own cursor.
void GridView::FollowCursor() {
  const auto table = view_.As<css::awt::grid::XGridControl>();
  const std::int32_t row = table->getCurrentRow() + grid_.FixedRows();
  const std::int32_t col = std::max(0, table->getCurrentColumn()) + grid_.FixedCols();
  if (table->getCurrentRow() < 0 || (row == grid_.Row() && col == grid_.Col())) return;
  Act([&] { grid_.UserMoveTo(row, col); });
}

// A person has dragged the edge of a header.
void GridView::TakeWidths() {
  if (showing_) return;
  for (std::size_t i = 0; i < shown_columns_.size(); ++i) {
    const auto place = static_cast<sal_Int32>(i);
    if (place >= columns_->getColumnCount()) return;
    const std::int32_t units = columns_->getColumn(place)->getColumnWidth();
    if (units == ToUnits(view_, shown_columns_[i].width)) continue;
    const std::int32_t pixels = ToPixels(view_, units);
    shown_columns_[i].width = pixels;
    views_.loop().Guard([&] { grid_.UserResizeColumn(place + grid_.FixedCols(), views_.TwipsOf(pixels)); });
  }
}

void GridView::Act(const std::function<void()>& act) { views_.Act(view_, act); }

Box MakeBox(Grid& grid, Views& views, std::vector<std::int32_t> usual_widths) {
  View& view = views.Add("Grid", &grid, grid.Name());
  auto table = std::make_shared<GridView>(grid, view, views, std::move(usual_widths));
  view.show = [table] { table->Invalidate(); };
  view.connect = [table] { table->Connect(); };
  Box place = views.BoxOf(view, [&] {
    return Extent{kLettersOfGrid * views.LetterWidth(), layout::kLinesOfGrid * views.LineHeight()};
  });
  place.wide = place.high = true;
  return place;
}

}  // namespace mirelo::calc
