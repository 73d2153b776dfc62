#include "app/output/sheet_text.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "automation/text.h"
#include "terminal/text_columns.h"

namespace mirelo::app {

namespace {

using terminal::ColorDepth;
using terminal::ColumnsOf;
using terminal::FirstColumns;
using terminal::Paint;
using terminal::ShownText;

constexpr std::size_t kLeastColumn = 3;
constexpr std::size_t kGreatestColumn = 40;  // where lines have an end
constexpr std::size_t kSpillsFrom = 10;      // shorter texts make their column as wide as they are
constexpr std::size_t kMargin = 2;           // a blank at either side of a cell
constexpr std::size_t kEndless = std::size_t{1} << 30;

std::string Aligned(const std::string& text, std::size_t width, ShownCell::Side side) {
  const std::size_t room = width - std::min(width, ColumnsOf(text));
  const std::size_t before = side == ShownCell::Side::Left     ? 0
                             : side == ShownCell::Side::Middle ? room / 2
                                                               : room;
  return std::string(before, ' ') + text + std::string(room - before, ' ');
}

class Layout {
 public:
  Layout(const ShownCells& cells, std::size_t width, ColorDepth depth)
      : cells_(cells), width_(width), depth_(depth) {
    if (!cells.rows.empty()) {
      const auto last = cells.first_row + static_cast<std::int32_t>(cells.rows.size()) - 1;
      number_width_ = std::to_string(last).size();
      MeasureColumns();
    }
  }

  SheetText Lines() const {
    ShownText text = Line(Letters());
    for (std::size_t r = 0; r < cells_.rows.size(); ++r) text += Line(Row(r));
    return {std::move(text), widths_.size()};
  }

 private:
  struct Piece {
    std::string text;
    Paint paint;
  };
  using Pieces = std::vector<Piece>;

  void MeasureColumns() {
    std::size_t used = number_width_ + 1;
    for (std::size_t c = 0; c < cells_.rows.front().size(); ++c) {
      std::size_t column = ColumnWidth(c);
      if (width_ > 0) {
        column = std::min(column, kGreatestColumn);
        const std::size_t room = width_ - std::min(width_, used + kMargin);
        if (column > room && c > 0) return;
        column = std::clamp<std::size_t>(column, 1, std::max<std::size_t>(room, 1));
      }
      used += column + kMargin;
      widths_.push_back(column);
    }
    behind_ = width_ == 0 ? kEndless : width_ - std::min(width_, used);
  }

  std::size_t ColumnWidth(std::size_t c) const {
    std::size_t width =
        std::max(kLeastColumn, ColumnLetters(cells_.first_column + static_cast<std::int32_t>(c)).size());
    for (const auto& row : cells_.rows) {
      const std::size_t own = ColumnsOf(row[c].text);
      const bool has_room =
          own >= kSpillsFrom && row[c].spills && c + 1 < row.size() && row[c + 1].text.empty();
      if (!has_room) width = std::max(width, own);
    }
    return width;
  }

  Pieces Letters() const {
    Paint dim;
    dim.dim = true;
    Pieces pieces{{std::string(number_width_ + 1, ' '), {}}};
    for (std::size_t c = 0; c < widths_.size(); ++c) {
      const std::string letters = ColumnLetters(cells_.first_column + static_cast<std::int32_t>(c));
      pieces.push_back({Aligned(letters, widths_[c] + kMargin, ShownCell::Side::Middle), dim});
    }
    return pieces;
  }

  Pieces Row(std::size_t r) const {
    Paint dim;
    dim.dim = true;
    const auto number = std::to_string(cells_.first_row + static_cast<std::int32_t>(r));
    Pieces pieces{{Aligned(number, number_width_, ShownCell::Side::Right) + ' ', dim}};
    const auto& row = cells_.rows[r];
    for (std::size_t c = 0; c < widths_.size();) {
      const std::size_t next = EndOfText(row, c);
      AddCells(pieces, row, c, next);
      c = next;
    }
    return pieces;
  }

  // The column behind the last one that a cell's text needs.
  std::size_t EndOfText(const std::vector<ShownCell>& row, std::size_t c) const {
    std::size_t end = c + 1;
    std::size_t room = widths_[c];
    while (row[c].spills && end < widths_.size() && row[end].text.empty() && ColumnsOf(row[c].text) > room) {
      room += widths_[end] + kMargin;
      ++end;
    }
    return end;
  }

  // A text over the cells from `first` to before `end`, each of them painted on its own ground. Behind the
  // last column of all it may go on to the line's end.
  void AddCells(Pieces& pieces, const std::vector<ShownCell>& row, std::size_t first, std::size_t end) const {
    std::size_t width = 0;
    for (std::size_t c = first; c < end; ++c) width += widths_[c] + kMargin;
    const ShownCell& cell = row[first];
    const std::size_t room = width - kMargin + (cell.spills && end == row.size() ? behind_ : 0);
    const std::string line =
        ' ' + Aligned(terminal::Shortened(cell.text, room), width - kMargin, cell.side) + ' ';
    std::string_view rest = line;
    for (std::size_t c = first; c < end; ++c) {
      Paint paint = cell.paint;
      if (c > first) paint.ground = row[c].paint.ground;
      // A wide character that lies across the cells' edge is painted with the second one's.
      const std::string_view part = FirstColumns(rest, widths_[c] + kMargin);
      pieces.push_back({std::string(part), paint});
      rest.remove_prefix(part.size());
    }
    if (rest.empty()) return;
    Paint paint = cell.paint;
    paint.ground.reset();
    pieces.push_back({std::string(rest), paint});
  }

  ShownText Line(const Pieces& pieces) const {
    ShownText line;
    std::string text;
    for (auto piece = pieces.begin(); piece != pieces.end();) {
      text.clear();
      const Paint& paint = piece->paint;
      for (; piece != pieces.end() && (depth_ == ColorDepth::None || piece->paint == paint); ++piece) {
        text += piece->text;
      }
      const bool is_all = depth_ == ColorDepth::None;
      line += terminal::Painted(ShownText(is_all ? RTrim(text) : text), paint, depth_);
    }
    return line + "\n";
  }

  const ShownCells& cells_;
  std::size_t width_;
  ColorDepth depth_;
  std::size_t number_width_ = 1;
  std::vector<std::size_t> widths_;
  std::size_t behind_ = 0;  // room in a line behind all columns
};

}  // namespace

SheetText LayOut(const ShownCells& cells, std::size_t width, ColorDepth depth) {
  return Layout(cells, width, depth).Lines();
}

}  // namespace mirelo::app
