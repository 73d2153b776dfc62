#pragma once

#include <cstdint>
#include <vector>

#include "adapters/workbook/model/sheet.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/pixels.h"

namespace mirelo::workbook {

// Where cells lie, from the sheet's top left corner. Hidden columns and rows take no place. The cost grows
// with the number of runs of columns or rows of one size, not with the number of columns or rows.

inline constexpr double kStandardRowHeight = 15;
inline constexpr std::int64_t kEmuPerPoint = 12'700;  // the unit of lengths in drawings

// What the window shows of a sheet, from its first cell on and whatever is frozen: 20 columns and 27 rows of
// the standard sizes. In points.
inline constexpr double kWindowWidth = 960;
inline constexpr double kWindowHeight = 405;

// The columns (rows) from `first` to `last` together, in points; 0 when there are none.
double WidthOfColumns(const Sheet& sheet, std::int32_t first, std::int32_t last);
double HeightOfRows(const Sheet& sheet, std::int32_t first, std::int32_t last);

// The cells that the window shows, those at its edge in part.
Area VisibleArea(const Sheet& sheet);

// A length in the unit of drawings.
std::int64_t Emu(double points);

// Converts between columns (or rows) of a sheet and distances from its first one, for the anchors of
// drawings. It is a copy: made once, asked often, and out of date when the sheet's sizes change. Distances
// are whole numbers of EMU, the unit of drawings, so that an anchor that was written is read as the same
// place.
class Ruler {
 public:
  static Ruler OfColumns(const Sheet& sheet);
  static Ruler OfRows(const Sheet& sheet);

  // A row or column, counted from 1, and how far into it.
  struct Mark {
    std::int32_t number = 1;
    std::int64_t offset = 0;
  };
  // The row or column at a distance from the first one's start: always one on the sheet, and one that can be
  // seen if there is any.
  Mark MarkAt(std::int64_t distance) const;
  // `offset` reaches no further than the end of the row or column.
  std::int64_t DistanceOf(const Mark& mark) const;

 private:
  template <class T>
  Ruler(const RunMap<T>& sizes, std::int32_t count);

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
