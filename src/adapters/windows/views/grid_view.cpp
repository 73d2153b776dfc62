#include "adapters/windows/views/grid_view.h"

#include <windowsx.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "adapters/windows/views/control_maker.h"
#include "automation/wide_text.h"
#include "forms/layout/measures.h"

namespace mirelo::windows {

namespace layout = forms::layout;

using forms::Grid;
using forms::layout::Box;
using forms::layout::Extent;

namespace {

constexpr int kAroundHeader = 8;
constexpr int kAroundRow = 6;
constexpr int kReachOfEdge = 4;
constexpr int kLettersOfGrid = 60;
constexpr int kLinesOfWheel = 3;
constexpr int kScrolledPixels = 20;

bool IsDown(int key) { return ::GetKeyState(key) < 0; }

}  // namespace

GridView::GridView(Grid& grid, Views& views, std::vector<std::int32_t> usual_widths)
    : grid_(grid), views_(views), usual_widths_(std::move(usual_widths)) {}

std::optional<LRESULT> GridView::Handle(UINT message, WPARAM first, LPARAM second) {
  const std::int32_t x = GET_X_LPARAM(second);
  const std::int32_t y = GET_Y_LPARAM(second);
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      Paint();
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case kUpdate:
      Update();
      return 0;
    case WM_SIZE:
    case WM_ENABLE:
      Invalidate();
      return std::nullopt;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      Repaint();
      return std::nullopt;
    case WM_LBUTTONDOWN:
      Press(x, y);
      return 0;
    case WM_MOUSEMOVE:
      Move(x, y);
      return 0;
    case WM_LBUTTONUP:
      Release();
      return 0;
    case WM_LBUTTONDBLCLK:
      DoublePress(x, y);
      return 0;
    case WM_CAPTURECHANGED:
      pressed_.reset();
      resize_.reset();
      Repaint();
      return 0;
    case WM_SETCURSOR:
      if (LOWORD(second) == HTCLIENT && ShowCursor()) return TRUE;
      return std::nullopt;
    case WM_KEYDOWN:
      if (Key(first)) return 0;
      return std::nullopt;
    case WM_CHAR:
      if (first > VK_SPACE && !IsDown(VK_CONTROL)) Edit(static_cast<wchar_t>(first));
      return 0;
    case WM_VSCROLL:
      Scroll(SB_VERT, LOWORD(first));
      return 0;
    case WM_HSCROLL:
      Scroll(SB_HORZ, LOWORD(first));
      return 0;
    case WM_MOUSEWHEEL:
      Turn(-GET_WHEEL_DELTA_WPARAM(first) * kLinesOfWheel / WHEEL_DELTA);
      return 0;
    default:
      return std::nullopt;
  }
}

GridPlaces GridView::Places() const {
  GridPlaces places;
  for (std::int32_t col = 0; col < grid_.Cols(); ++col) places.widths.push_back(WidthOf(col));
  places.row_height = views_.letters().LetterHeight() + views_.letters().Scaled(kAroundRow);
  places.rows = grid_.Rows();
  places.fixed_rows = grid_.FixedRows();
  places.fixed_cols = grid_.FixedCols();
  places.first_row = first_row_;
  places.offset = offset_;
  const RECT room = Room();
  places.room = {room.right, room.bottom};
  places.KeepInside();
  return places;
}

// Fixed columns are what rows are taken by, and hold no words. The grid keeps the width of others: what is
// stored of it says whether somebody has chosen one.
std::int32_t GridView::WidthOf(std::int32_t col) const {
  if (col < grid_.FixedCols()) return views_.letters().LineHeight();
  const std::int32_t twips = grid_.ColWidth(col);
  const std::int32_t width = views_.letters().PixelsOf(twips);
  const bool is_chosen = std::ranges::find(usual_widths_, twips) == usual_widths_.end();
  if (is_chosen || grid_.Rows() == 0) return width;
  const Lettering& letters = views_.letters();
  return std::max(width,
                  letters.ExtentOf(grid_.TextMatrix(0, col)).width + 2 * letters.Scaled(kAroundHeader));
}

void GridView::Invalidate() {
  if (!std::exchange(out_of_date_, true)) ::PostMessageW(window(), kUpdate, 0, 0);
}

void GridView::Update() {
  out_of_date_ = false;
  const Cell active{grid_.Row(), grid_.Col()};
  if (std::exchange(shown_active_, active) != active) {
    GridPlaces places = Places();
    places.Reveal(active.row, active.col);
    first_row_ = places.first_row;
    offset_ = places.offset;
  }
  ShowScrollBars();
  Repaint();
}

void GridView::ShowScrollBars() const {
  const GridPlaces places = Places();
  SCROLLINFO seen{};
  seen.cbSize = sizeof seen;
  seen.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  seen.nPage = static_cast<UINT>(places.RowsSeen());
  seen.nMax = std::max(0, places.LastFirstRow() + places.RowsSeen() - 1);
  seen.nPos = places.first_row;
  ::SetScrollInfo(window(), SB_VERT, &seen, TRUE);
  seen.nPage = static_cast<UINT>(places.room.width);
  seen.nMax = std::max(0, places.LastOffset() + places.room.width - 1);
  seen.nPos = places.offset;
  ::SetScrollInfo(window(), SB_HORZ, &seen, TRUE);
}

void GridView::Scroll(int bar, int code) {
  const GridPlaces places = Places();
  const bool down = bar == SB_VERT;
  const std::int32_t line = down ? 1 : views_.letters().Scaled(kScrolledPixels);
  const std::int32_t page = down ? places.RowsSeen() : places.room.width / 2;
  std::int32_t& at = down ? first_row_ : offset_;
  at = down ? places.first_row : places.offset;
  SCROLLINFO dragged{};
  dragged.cbSize = sizeof dragged;
  dragged.fMask = SIF_TRACKPOS;
  switch (code) {
    case SB_LINEUP:
      at -= line;
      break;
    case SB_LINEDOWN:
      at += line;
      break;
    case SB_PAGEUP:
      at -= page;
      break;
    case SB_PAGEDOWN:
      at += page;
      break;
    case SB_THUMBTRACK:
      if (::GetScrollInfo(window(), bar, &dragged) != 0) at = dragged.nTrackPos;
      break;
    default:
      break;
  }
  const std::int32_t last = down ? places.LastFirstRow() : places.LastOffset();
  at = std::clamp<std::int32_t>(at, 0, last);
  EndEdit(true);
  Update();
}

void GridView::Turn(int steps) {
  const GridPlaces places = Places();
  first_row_ = std::clamp<std::int32_t>(places.first_row + steps, 0, places.LastFirstRow());
  EndEdit(true);
  Update();
}

// A click counts when the mouse is released on the cell that it was pressed on. Released on another cell, it
// has dragged a selection, of which the grid learns only then: it acts on selections.
void GridView::Press(std::int32_t x, std::int32_t y) {
  EndEdit(true);
  ::SetFocus(window());
  const GridPlaces places = Places();
  if (const auto edge = places.EdgeAt(x, y, views_.letters().Scaled(kReachOfEdge))) {
    resize_ = Resize{*edge, x, WidthOf(*edge)};
  } else {
    pressed_ = places.CellAt(x, y);
    if (pressed_) dragged_to_ = *pressed_;
  }
  ::SetCapture(window());
  Repaint();
}

void GridView::Move(std::int32_t x, std::int32_t y) {
  if (resize_) {
    const Resize resize = *resize_;
    const std::int32_t width = std::max(views_.letters().LetterWidth() * 2, resize.width + x - resize.from);
    Act([&] { grid_.UserResizeColumn(resize.col, views_.letters().TwipsOf(width)); });
  } else if (pressed_) {
    if (const auto cell = Places().CellAt(x, y)) dragged_to_ = *cell;
    Repaint();
  }
}

void GridView::Release() {
  const auto from = std::exchange(pressed_, std::nullopt);
  const Cell to = dragged_to_;
  resize_.reset();
  ::ReleaseCapture();
  if (!from) return;
  Act([&] {
    if (*from == to) return grid_.UserClickCell(from->row, from->col);
    grid_.UserMoveTo(from->row, from->col);
    grid_.UserDragTo(to.row, to.col);
  });
}

// The second press of two: on a text it opens the cell, on a check cell it is a press like the first.
void GridView::DoublePress(std::int32_t x, std::int32_t y) {
  if (const auto cell = Places().CellAt(x, y)) {
    Act([&] { grid_.UserMoveTo(cell->row, cell->col); });
    if (Edit(0)) return;
  }
  Press(x, y);
}

bool GridView::ShowCursor() const {
  POINT at{};
  ::GetCursorPos(&at);
  ::ScreenToClient(window(), &at);
  const bool on_edge = Places().EdgeAt(at.x, at.y, views_.letters().Scaled(kReachOfEdge)).has_value();
  if (on_edge) ::SetCursor(::LoadCursorW(nullptr, IDC_SIZEWE));
  return on_edge;
}

bool GridView::Key(WPARAM key) {
  const bool extends = IsDown(VK_SHIFT);
  const Cell from = extends ? Cell{grid_.RowSel(), grid_.ColSel()} : Cell{grid_.Row(), grid_.Col()};
  if (const auto to = Reached(key, from)) {
    Act([&] { extends ? grid_.UserExtendTo(to->row, to->col) : grid_.UserMoveTo(to->row, to->col); });
    return true;
  }
  if (key == VK_SPACE) {
    Act([this] { grid_.UserToggle(); });
    return true;
  }
  if (key == 'A' && IsDown(VK_CONTROL)) {
    Act([this] { grid_.UserClickCell(0, 0); });
    return true;
  }
  return key == VK_F2 && Edit(0);
}

// Where a key leads to; nowhere when it is none that moves, or there is no cell.
std::optional<GridView::Cell> GridView::Reached(WPARAM key, Cell from) const {
  const std::int32_t first_row = grid_.FixedRows(), last_row = grid_.Rows() - 1;
  const std::int32_t first_col = grid_.FixedCols(), last_col = grid_.Cols() - 1;
  if (last_row < first_row || last_col < first_col) return std::nullopt;
  const std::int32_t page = std::max<std::int32_t>(1, Places().RowsSeen() - 1);
  switch (key) {
    case VK_UP:
      --from.row;
      break;
    case VK_DOWN:
      ++from.row;
      break;
    case VK_LEFT:
      --from.col;
      break;
    case VK_RIGHT:
      ++from.col;
      break;
    case VK_PRIOR:
      from.row -= page;
      break;
    case VK_NEXT:
      from.row += page;
      break;
    case VK_HOME:
      from.row = first_row;
      break;
    case VK_END:
      from.row = last_row;
      break;
    default:
      return std::nullopt;
  }
  return Cell{std::clamp(from.row, first_row, last_row), std::clamp(from.col, first_col, last_col)};
}

void GridView::Act(const std::function<void()>& act) {
  if (const View* view = views_.ViewOf(&grid_)) views_.Act(*view, act);
}

Box ControlMaker::MakeBox(Grid& grid, const std::vector<std::int32_t>& usual_widths) {
  const auto table = std::make_shared<GridView>(grid, views_, usual_widths);
  View& view = views_.Add(table, WS_TABSTOP | WS_BORDER | WS_VSCROLL | WS_HSCROLL | WS_CLIPCHILDREN, &grid);
  view.show = [table = table.get()] { table->Invalidate(); };
  view.take_key = [table = table.get()](WPARAM key) { return table->TakeKey(key); };
  Box place = views_.BoxOf(view, [this] {
    const Lettering& letters = views_.letters();
    return Extent{kLettersOfGrid * letters.LetterWidth(), layout::kLinesOfGrid * letters.LineHeight()};
  });
  place.wide = place.high = true;
  return place;
}

}  // namespace mirelo::windows
