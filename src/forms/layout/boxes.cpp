#include "forms/layout/boxes.h"

#include <algorithm>
#include <cstddef>

namespace mirelo::forms::layout {

namespace {

using Length = std::int32_t;

// A row and a column are the same thing along different sides.
struct Along {
  bool across;  // from left to right, else from above

  Length Of(const Extent& extent) const { return across ? extent.width : extent.height; }
  Length Beside(const Extent& extent) const { return across ? extent.height : extent.width; }
  Extent Made(Length along, Length beside) const {
    return across ? Extent{along, beside} : Extent{beside, along};
  }
};

bool IsSeen(const Box& box) {
  switch (box.kind) {
    case Box::Kind::Leaf:
      return !box.seen || box.seen();
    case Box::Kind::Space:
      return true;
    default:
      return box.boxes.empty() || std::ranges::any_of(box.boxes, [](const Box& inner) {
               return inner.kind != Box::Kind::Space && IsSeen(inner);
             });
  }
}

std::vector<const Box*> SeenOf(const Box& box) {
  std::vector<const Box*> seen;
  for (const Box& inner : box.boxes) {
    if (IsSeen(inner)) seen.push_back(&inner);
  }
  return seen;
}

// Whether it uses more than it needs along a side.
bool Uses(const Box& box, bool across) {
  switch (box.kind) {
    case Box::Kind::Leaf:
      return across ? box.wide : box.high;
    case Box::Kind::Space:
    case Box::Kind::Stack:
    case Box::Kind::Cells:
      return true;
    default:
      return std::ranges::any_of(box.boxes, [&](const Box& inner) {
        const bool main_side = across == (box.kind == Box::Kind::Row);
        if (inner.kind == Box::Kind::Space) return main_side;
        return (main_side && inner.stretch > 0) || Uses(inner, across);
      });
  }
}

Extent WithMargin(const Box& box, Extent inside) {
  return {inside.width + 2 * box.margin, inside.height + 2 * box.margin};
}

Place Inside(const Box& box, const Place& place) {
  return {place.left + box.margin, place.top + box.margin, std::max(0, place.width - 2 * box.margin),
          std::max(0, place.height - 2 * box.margin)};
}

Length GapsOf(const Box& box, std::size_t boxes) {
  return boxes < 2 ? 0 : box.gap * static_cast<Length>(boxes - 1);
}

Extent NeededInLine(const Box& box, Along along) {
  Length sum = 0;
  Length beside = 0;
  const auto seen = SeenOf(box);
  for (const Box* inner : seen) {
    const Extent needs = Needed(*inner);
    sum += along.Of(needs);
    beside = std::max(beside, along.Beside(needs));
  }
  return along.Made(sum + GapsOf(box, seen.size()), beside);
}

// What is left over, for each box.
std::vector<Length> SharesOf(const std::vector<const Box*>& boxes, Along along, Length left_over) {
  std::vector<Length> weights;
  weights.reserve(boxes.size());
  for (const Box* box : boxes) weights.push_back(box->kind == Box::Kind::Space ? 1 : box->stretch);
  if (std::ranges::all_of(weights, [](Length weight) { return weight == 0; })) {
    std::ranges::transform(boxes, weights.begin(),
                           [&](const Box* box) { return Uses(*box, along.across) ? 1 : 0; });
  }
  Length sum = 0;
  for (const Length weight : weights) sum += weight;
  std::vector<Length> shares(boxes.size(), 0);
  for (std::size_t i = 0; i < boxes.size() && sum > 0; ++i) {
    shares[i] = left_over * weights[i] / sum;
    left_over -= shares[i];
    sum -= weights[i];
  }
  return shares;
}

// The place of a box in a line that is as high (or wide) as `room`, beside the line's direction.
Place Beside(const Box& box, const Place& room, Along along) {
  Place place = room;
  const Extent needs = Needed(box);
  if (Uses(box, !along.across)) return place;
  if (along.across) {
    place.height = std::min(room.height, needs.height);
    place.top += (room.height - place.height) / 2;
  } else {
    place.width = std::min(room.width, needs.width);
  }
  return place;
}

void PutInLine(const Box& box, const Place& room, Along along) {
  const auto seen = SeenOf(box);
  const Length all = along.across ? room.width : room.height;
  const Length left_over = std::max(0, all - along.Of(NeededInLine(box, along)));
  const auto shares = SharesOf(seen, along, left_over);
  Length at = along.across ? room.left : room.top;
  const Length end = at + all;
  for (std::size_t i = 0; i < seen.size(); ++i) {
    const Length length = std::clamp(along.Of(Needed(*seen[i])) + shares[i], 0, std::max(0, end - at));
    Place place = room;
    (along.across ? place.left : place.top) = at;
    (along.across ? place.width : place.height) = length;
    Put(*seen[i], Beside(*seen[i], place, along));
    at += length + box.gap;
  }
}

Length OwnFirstWidth(const Box& lines) {
  Length width = 0;
  for (const Box* line : SeenOf(lines)) width = std::max(width, Needed(line->boxes.at(0)).width);
  return width;
}

Length FirstWidth(const Box& lines) {
  const Length own = OwnFirstWidth(lines);
  if (!lines.first_width) return own;
  *lines.first_width = std::max(*lines.first_width, own);
  return *lines.first_width;
}

Extent NeededByLines(const Box& lines) {
  const auto seen = SeenOf(lines);
  Extent needs{0, GapsOf(lines, seen.size())};
  for (const Box* line : seen) {
    const Extent first = Needed(line->boxes.at(0));
    const Extent second = Needed(line->boxes.at(1));
    needs.width = std::max(needs.width, FirstWidth(lines) + line->gap + second.width);
    needs.height += std::max(first.height, second.height);
  }
  return needs;
}

void PutLines(const Box& lines, const Place& room) {
  constexpr Along kAcross{true};
  const Length first_width = FirstWidth(lines);
  Length at = room.top;
  for (const Box* line : SeenOf(lines)) {
    const Box& first = line->boxes.at(0);
    const Box& second = line->boxes.at(1);
    const Length height = std::max(Needed(first).height, Needed(second).height);
    const Length gap = first_width + line->gap;
    Place place = Beside(first, {room.left, at, first_width, height}, kAcross);
    place.width = Uses(first, true) ? first_width : std::min(first_width, Needed(first).width);
    Put(first, place);
    place = Beside(second, {room.left + gap, at, std::max(0, room.width - gap), height}, kAcross);
    if (!Uses(second, true)) place.width = std::min(place.width, Needed(second).width);
    Put(second, place);
    at += height + lines.gap;
  }
}

Length ColumnsOf(const Box& cells) {
  return (static_cast<Length>(cells.boxes.size()) + cells.rows - 1) / cells.rows;
}

Extent NeededByCells(const Box& cells) {
  Extent cell;
  for (const Box& inner : cells.boxes) {
    const Extent needs = Needed(inner);
    cell = {std::max(cell.width, needs.width), std::max(cell.height, needs.height)};
  }
  const Length columns = ColumnsOf(cells);
  return {columns * cell.width + std::max(0, columns - 1) * cells.gap,
          cells.rows * cell.height + std::max(0, cells.rows - 1) * cells.gap};
}

void PutCells(const Box& cells, const Place& room) {
  const Length columns = ColumnsOf(cells);
  for (std::size_t i = 0; i < cells.boxes.size(); ++i) {
    const Length column = static_cast<Length>(i) / cells.rows;
    const Length row = static_cast<Length>(i) % cells.rows;
    const Length left = column * (room.width + cells.gap) / columns;
    const Length top = row * (room.height + cells.gap) / cells.rows;
    Put(cells.boxes[i], {room.left + left, room.top + top,
                         (column + 1) * (room.width + cells.gap) / columns - cells.gap - left,
                         (row + 1) * (room.height + cells.gap) / cells.rows - cells.gap - top});
  }
}

// Those that are not seen just now are to fit as well.
Extent NeededByStack(const Box& stack) {
  Extent needs;
  for (const Box& inner : stack.boxes) {
    const Extent one = Needed(inner);
    needs = {std::max(needs.width, one.width), std::max(needs.height, one.height)};
  }
  return needs;
}

}  // namespace

Extent Needed(const Box& box) {
  switch (box.kind) {
    case Box::Kind::Leaf:
      return box.needs ? box.needs() : Extent();
    case Box::Kind::Space:
      return {};
    case Box::Kind::Row:
    case Box::Kind::Column:
      return WithMargin(box, NeededInLine(box, {box.kind == Box::Kind::Row}));
    case Box::Kind::Lines:
      return WithMargin(box, NeededByLines(box));
    case Box::Kind::Cells:
      return WithMargin(box, NeededByCells(box));
    case Box::Kind::Stack:
      return WithMargin(box, NeededByStack(box));
  }
  return {};
}

void Put(const Box& box, const Place& place) {
  const Place room = Inside(box, place);
  switch (box.kind) {
    case Box::Kind::Leaf:
      if (box.put && IsSeen(box)) box.put(place);
      return;
    case Box::Kind::Space:
      return;
    case Box::Kind::Row:
    case Box::Kind::Column:
      return PutInLine(box, room, {box.kind == Box::Kind::Row});
    case Box::Kind::Lines:
      return PutLines(box, room);
    case Box::Kind::Cells:
      return PutCells(box, room);
    case Box::Kind::Stack:
      for (const Box& inner : box.boxes) Put(inner, room);
      return;
  }
}

}  // namespace mirelo::forms::layout
