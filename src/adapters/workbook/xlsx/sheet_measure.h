#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "adapters/workbook/model/sheet.h"

namespace mirelo::workbook {

// Where rows or columns begin, in the unit of drawings. Hidden ones take no place.
class Ruler {
 public:
  static Ruler OfColumns(const Sheet& sheet);
  static Ruler OfRows(const Sheet& sheet);

  // A row or column, counted from 1, and how far into it.
  struct Mark {
    std::int32_t number = 1;
    std::int64_t offset = 0;
  };
  // What lies at a distance from the first one's start: on the sheet, and in one that can be seen if any can.
  Mark MarkAt(std::int64_t distance) const;
  // `offset` reaches no further than the end of the row or column.
  std::int64_t DistanceOf(const Mark& mark) const;

 private:
  explicit Ruler(std::int32_t count) : count_(count) {}
  void Add(std::int32_t first, std::int32_t last, std::int64_t size);

  struct Run {
    std::int32_t first;
    std::int64_t start;
    std::int64_t size;  // of each
  };
  std::int32_t count_;
  std::int64_t end_ = 0;
  std::vector<Run> runs_;
};

// The rulers of a sheet.
struct SheetMeasure {
  explicit SheetMeasure(const Sheet& sheet) : columns(Ruler::OfColumns(sheet)), rows(Ruler::OfRows(sheet)) {}
  Ruler columns;
  Ruler rows;
};

}  // namespace mirelo::workbook
