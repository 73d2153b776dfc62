#pragma once

#include <com/sun/star/table/BorderLine2.hpp>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

#include "adapters/calc/objects/block_change.h"
#include "adapters/calc/objects/cell_block.h"
#include "automation/variant.h"
#include "host/excel/constants.h"
#include "spreadsheet/style.h"

namespace mirelo::calc {

// The lines along an edge of a block of cells, or between its cells. A line lies between two cells, and
// either of them may hold it: reading takes it from whichever does. Writing at an edge of the block gives the
// line to the cells inside and takes it off those outside, so that no cell outside gets a format.
//
// The office's lines have no slant, and automatic ones are black.
class BorderLines {
 public:
  using Line = spreadsheet::BorderLine;

  // Error 1004 for numbers that are no index.
  BorderLines(CellBlock block, host::excel::XlBordersIndex index);

  // What get(const Line&) gives for the lines when it is the same for all of them, else an empty variant. For
  // a block without such lines: what it gives for no line.
  template <class Get>
  Variant Common(Get&& get) const {
    return block_.document().Ask([&]() -> Variant {
      std::optional<Variant> common;
      bool is_common = true;
      ForEach(block_, index_, [&](const CellBlock&, host::excel::XlBordersIndex, const Line& line) {
        const Variant value(get(line));
        if (!common) common = value;
        if (!(*common == value)) is_common = false;
      });
      return is_common ? *common : Variant();
    });
  }

  // Changes each line by change(Line&).
  template <class Function>
  void Change(Function&& change) const {
    if (block_.document().Gathers() && Gather(change)) return;
    ChangeCells(block_, [&] {
      ForEach(block_, index_,
              [&](const CellBlock& block, host::excel::XlBordersIndex index, const Line& line) {
                Line changed = line;
                change(changed);
                Draw(block, index, changed);
              });
    });
  }

 private:
  using Visit = std::function<void(const CellBlock&, host::excel::XlBordersIndex, const Line&)>;

  // Visits the parts of the lines, each of which looks the same all along.
  static void ForEach(const CellBlock& block, host::excel::XlBordersIndex index, const Visit& visit);
  // Whether they look the same all along, so that their change could be gathered.
  bool Gather(const std::function<void(Line&)>& change) const;
  static void Draw(const CellBlock& block, host::excel::XlBordersIndex index, const Line& line);

  CellBlock block_;
  host::excel::XlBordersIndex index_;
};

}  // namespace mirelo::calc
