#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "adapters/workbook/objects/cell_block.h"
#include "host/excel/constants.h"

namespace mirelo::workbook {

// The lines along an edge of a block of cells, or between its cells. A line lies between two cells, and
// either of them may hold it: reading takes it from whichever does. Writing at an edge of the block gives the
// line to the cell inside and takes it off the one outside, so that no cell outside gets a format; between
// cells of the block, both get it.
class BorderLines {
 public:
  // Error 1004 for numbers that are no index.
  BorderLines(const CellBlock& block, host::excel::XlBordersIndex index);

  // What get(const BorderLine&) gives for the lines when it is the same for all of them, else an empty
  // variant. For a block without such lines: what it gives for no line.
  template <class Get>
  Variant Common(Get&& get) const {
    std::optional<Variant> common;
    bool is_common = true;
    ForEach([&](const BorderLine& line) {
      const Variant value(get(line));
      if (!common) common = value;
      if (!(*common == value)) is_common = false;
    });
    if (!is_common) return {};
    return common ? *common : Variant(get(BorderLine{}));
  }

  // Changes each line by change(BorderLine&).
  template <class Function>
  void Change(Function&& change) {
    if (!own_) return;
    TakeOver();
    ChangeEdge(*own_, change);
    if (is_inside_) GiveCopies();
  }

 private:
  // One edge of all cells of an area.
  struct Side {
    Area area;
    Edge edge;
  };

  const StyleTable& Styles() const { return block_.book->styles; }
  const BorderLine& LineOf(StyleId style, Edge edge) const;

  // Calls visit(const BorderLine&) for the lines.
  template <class Visit>
  void ForEach(Visit&& visit) const {
    if (!own_) return;
    block_.sheet->styles.ForEach(own_->area, [&](const Area& part, StyleId style) {
      const BorderLine& own = LineOf(style, own_->edge);
      if (own.line != 0 || !other_) return visit(own);
      const auto across = Shared(Moved(part, rows_, columns_), other_->area);
      if (!across) return visit(own);
      block_.sheet->styles.ForEach(*across,
                                   [&](const Area&, StyleId other) { visit(LineOf(other, other_->edge)); });
    });
  }

  // Changes an edge of the cells of an area by change(BorderLine&).
  template <class Function>
  void ChangeEdge(const Side& side, Function&& change) {
    ChangeStyle({block_.book, block_.sheet, side.area},
                [&](Style& style) { change(style.border.edges[static_cast<std::size_t>(side.edge)]); });
  }

  // Moves lines that only the cells across hold to the own side; those cells hold none then.
  void TakeOver();
  // Gives the cells across the same lines.
  void GiveCopies();

  // The parts of a side that have one line each.
  std::vector<std::pair<Area, BorderLine>> Parts(const Side& side) const;
  static Area Moved(const Area& area, std::int32_t rows, std::int32_t columns) {
    return {area.first_row + rows, area.first_column + columns, area.last_row + rows,
            area.last_column + columns};
  }

  CellBlock block_;
  std::optional<Side> own_;    // none inside a block of one row or column
  std::optional<Side> other_;  // the cells across the lines; none at the sheet's edge
  std::int32_t rows_ = 0;      // from the own side to the other one
  std::int32_t columns_ = 0;
  bool is_inside_ = false;
};

}  // namespace mirelo::workbook
