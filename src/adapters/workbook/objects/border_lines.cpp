#include "adapters/workbook/objects/border_lines.h"

#include <cstddef>

#include "adapters/workbook/rules.h"
#include "spreadsheet/refusals.h"

namespace mirelo::workbook {

using namespace host::excel;

namespace {

// Where lines lie: on which edge of the own side, and in which direction the cells across them.
struct Place {
  Edge own;
  Edge other;
  std::int32_t rows;
  std::int32_t columns;
};

constexpr Place kLeft{Edge::Left, Edge::Right, 0, -1};
constexpr Place kRight{Edge::Right, Edge::Left, 0, 1};
constexpr Place kTop{Edge::Top, Edge::Bottom, -1, 0};
constexpr Place kBottom{Edge::Bottom, Edge::Top, 1, 0};

Place PlaceOfLine(XlBordersIndex index) {
  switch (index) {
    case xlEdgeLeft:
    case xlInsideVertical:
      return kLeft;
    case xlEdgeRight:
      return kRight;
    case xlEdgeTop:
    case xlInsideHorizontal:
      return kTop;
    case xlEdgeBottom:
      return kBottom;
  }
  throw Refusals::NotABorder();
}

// The cells of the block whose edges these are; an area of no cells inside of a single row or column.
Area CellsAlong(Area area, XlBordersIndex index) {
  switch (index) {
    case xlEdgeLeft:
      area.last_column = area.first_column;
      break;
    case xlEdgeRight:
      area.first_column = area.last_column;
      break;
    case xlEdgeTop:
      area.last_row = area.first_row;
      break;
    case xlEdgeBottom:
      area.first_row = area.last_row;
      break;
    case xlInsideVertical:
      ++area.first_column;
      break;
    case xlInsideHorizontal:
      ++area.first_row;
      break;
  }
  return area;
}

using Part = std::pair<Area, BorderLine>;

// Whether a part goes on below the other one, or to its right.
bool GoesOnBelow(const Part& part, const Part& next) {
  return part.second == next.second && part.first.first_column == next.first.first_column &&
         part.first.last_column == next.first.last_column && part.first.last_row + 1 == next.first.first_row;
}
bool GoesOnBeside(const Part& part, const Part& next) {
  return part.second == next.second && part.first.first_row == next.first.first_row &&
         part.first.last_row == next.first.last_row && part.first.last_column + 1 == next.first.first_column;
}

// Neighbours in the list of which goes_on(part, next) holds become one.
template <class GoesOn>
std::vector<Part> Joined(const std::vector<Part>& parts, GoesOn&& goes_on) {
  std::vector<Part> joined;
  for (const Part& part : parts) {
    if (!joined.empty() && goes_on(joined.back(), part)) {
      joined.back().first = Around(joined.back().first, part.first);
    } else {
      joined.push_back(part);
    }
  }
  return joined;
}

}  // namespace

BorderLines::BorderLines(const CellBlock& block, XlBordersIndex index) : block_(block) {
  const Place place = PlaceOfLine(index);
  const Area area = CellsAlong(block.area, index);
  if (area.first_row > area.last_row || area.first_column > area.last_column) return;
  is_inside_ = index == xlInsideVertical || index == xlInsideHorizontal;
  rows_ = place.rows;
  columns_ = place.columns;
  own_ = Side{area, place.own};
  const Area across = Moved(area, rows_, columns_);
  if (across.IsOnSheet()) other_ = Side{across, place.other};
}

const BorderLine& BorderLines::LineOf(StyleId style, Edge edge) const {
  return Styles().Get(style).border.edges[static_cast<std::size_t>(edge)];
}

// Cells of different styles with the same line are one part where they lie together: changing a part costs as
// much as there are runs of rows in its columns, however small it is.
std::vector<std::pair<Area, BorderLine>> BorderLines::Parts(const Side& side) const {
  std::vector<Part> parts;
  block_.sheet->styles.ForEach(side.area, [&](const Area& part, StyleId style) {
    parts.emplace_back(part, LineOf(style, side.edge));
  });
  return Joined(Joined(parts, GoesOnBelow), GoesOnBeside);
}

void BorderLines::TakeOver() {
  if (!other_) return;
  for (const auto& [part, across] : Parts(*other_)) {
    if (across.line == 0) continue;
    const BorderLine taken = across;
    ChangeEdge({Moved(part, -rows_, -columns_), own_->edge}, [&](BorderLine& line) {
      if (line.line == 0) line = taken;
    });
    ChangeEdge({part, other_->edge}, [](BorderLine& line) { line = {}; });
  }
}

void BorderLines::GiveCopies() {
  if (!other_) return;
  for (const auto& [part, own] : Parts(*own_)) {
    const BorderLine given = own;
    ChangeEdge({Moved(part, rows_, columns_), other_->edge}, [&](BorderLine& line) { line = given; });
  }
}

}  // namespace mirelo::workbook
