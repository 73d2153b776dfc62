// What a grid looks like.

#include <algorithm>

#include "adapters/windows/views/grid_view.h"
#include "automation/wide_text.h"

namespace mirelo::windows {

using forms::Grid;

namespace {

constexpr int kPictureSide = 14;
constexpr int kTickSide = 13;
constexpr int kBesideText = 4;

RECT RectOf(const forms::layout::Place& place) {
  return {place.left, place.top, place.left + place.width, place.top + place.height};
}

UINT AlignmentOf(Grid::Alignment alignment) {
  switch (alignment) {
    case Grid::Alignment::Center:
      return DT_CENTER;
    case Grid::Alignment::Right:
      return DT_RIGHT;
    default:
      return DT_LEFT;
  }
}

void DrawWords(HDC context, RECT place, const std::string& text, UINT alignment, int beside) {
  ::InflateRect(&place, -beside, 0);
  ::DrawTextW(context, WideText(text).c_str(), -1, &place,
              alignment | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

}  // namespace

// First what is scrolled, then what stays and lies over it.
void GridView::Paint() {
  const Painting painting(window());
  const HDC context = painting.context();
  Fill(context, painting.room(), ::GetSysColor(COLOR_WINDOW));
  const HGDIOBJ former = ::SelectObject(context, views_.letters().font());
  const GridPlaces places = Places();
  const std::int32_t last =
      std::min(grid_.Rows(), grid_.FixedRows() + places.first_row + places.RowsSeen() + 1);
  const auto paint = [&](bool fixed_rows, bool fixed_cols) {
    const std::int32_t from = fixed_rows ? 0 : grid_.FixedRows() + places.first_row;
    const std::int32_t to = fixed_rows ? grid_.FixedRows() : last;
    for (std::int32_t row = from; row < to; ++row) {
      const std::int32_t end = fixed_cols ? grid_.FixedCols() : grid_.Cols();
      for (std::int32_t col = fixed_cols ? 0 : grid_.FixedCols(); col < end; ++col) {
        PaintCell(context, places, {row, col});
      }
    }
  };
  paint(false, false);
  paint(true, false);
  paint(false, true);
  paint(true, true);
  ::SelectObject(context, former);
}

void GridView::PaintCell(HDC context, const GridPlaces& places, Cell cell) {
  RECT place = RectOf(places.PlaceOf(cell.row, cell.col));
  const std::string& text = grid_.TextMatrix(cell.row, cell.col);
  const Grid::Alignment alignment = grid_.ColAlignment(cell.col);
  if (IsFixed(cell)) {
    return PaintHeader(context, place, text);
  }
  const bool selected = IsSelected(cell) && ::IsWindowEnabled(window()) != 0;
  Fill(context, place, ::GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  const bool faint = ::IsWindowEnabled(window()) == 0;
  ::SetTextColor(context, ::GetSysColor(selected ? COLOR_HIGHLIGHTTEXT
                                        : faint  ? COLOR_GRAYTEXT
                                                 : COLOR_WINDOWTEXT));
  const std::string& picture = grid_.Picture(cell.row, cell.col);
  if (grid_.ColDataType(cell.col) == Grid::kBooleanColumn) {
    PaintTick(context, place, !text.empty() && text != "0", picture);
  } else if (text.empty() && !picture.empty()) {
    DrawPicture(context, place, picture);
  } else {
    DrawWords(context, place, text, AlignmentOf(alignment), views_.letters().Scaled(kBesideText));
  }
  const RECT right{place.right - 1, place.top, place.right, place.bottom};
  const RECT below{place.left, place.bottom - 1, place.right, place.bottom};
  Fill(context, right, ::GetSysColor(COLOR_BTNFACE));
  Fill(context, below, ::GetSysColor(COLOR_BTNFACE));
  const bool is_active = cell == Cell{grid_.Row(), grid_.Col()};
  if (is_active && ::GetFocus() == window()) ::DrawFocusRect(context, &place);
}

void GridView::PaintHeader(HDC context, RECT place, const std::string& text) const {
  Fill(context, place, ::GetSysColor(COLOR_BTNFACE));
  ::DrawEdge(context, &place, BDR_RAISEDINNER, BF_RECT);
  ::SetTextColor(context, ::GetSysColor(::IsWindowEnabled(window()) != 0 ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  DrawWords(context, place, text, DT_CENTER, views_.letters().Scaled(kBesideText));
}

// A picture of a cell that is ticked stands beside the tick.
void GridView::PaintTick(HDC context, RECT place, bool ticked, const std::string& picture) {
  const int side = views_.letters().Scaled(kTickSide);
  const bool pictured = !picture.empty();
  const int left = (place.left + place.right - side) / 2 - (pictured ? side / 2 + 2 : 0);
  const int top = (place.top + place.bottom - side) / 2;
  RECT box{left, top, left + side, top + side};
  ::DrawFrameControl(context, &box, DFC_BUTTON,
                     static_cast<UINT>(DFCS_BUTTONCHECK | DFCS_FLAT | (ticked ? DFCS_CHECKED : 0)));
  if (pictured) DrawPicture(context, {box.right + 2, place.top, box.right + 4 + side, place.bottom}, picture);
}

void GridView::DrawPicture(HDC context, const RECT& place, const std::string& picture) {
  const int side = views_.letters().Scaled(kPictureSide);
  const std::string key = picture + " " + std::to_string(side);
  auto known = icons_.find(key);
  if (known == icons_.end()) known = icons_.emplace(key, PictureIcon(picture, side)).first;
  if (known->second.get() == nullptr) return;
  ::DrawIconEx(context, (place.left + place.right - side) / 2, (place.top + place.bottom - side) / 2,
               known->second.get(), side, side, 0, nullptr, DI_NORMAL);
}

bool GridView::IsFixed(Cell cell) const {
  return cell.row < grid_.FixedRows() || cell.col < grid_.FixedCols();
}

// While the mouse drags, what it has reached; the grid learns of that when it is released.
bool GridView::IsSelected(Cell cell) const {
  const Cell from = pressed_.value_or(Cell{grid_.Row(), grid_.Col()});
  const Cell to = pressed_ ? dragged_to_ : Cell{grid_.RowSel(), grid_.ColSel()};
  return cell.row >= std::min(from.row, to.row) && cell.row <= std::max(from.row, to.row) &&
         cell.col >= std::min(from.col, to.col) && cell.col <= std::max(from.col, to.col);
}

}  // namespace mirelo::windows
