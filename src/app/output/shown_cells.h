#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "terminal/color.h"

namespace mirelo::host::excel {
class Range;
class Worksheet;
}  // namespace mirelo::host::excel

namespace mirelo::app {

// One cell as a person sees it.
struct ShownCell {
  enum class Side { Left, Middle, Right };

  std::string text;  // in its number format, made visible
  Side side = Side::Left;
  bool spills = false;  // over empty cells at its right, as texts do and numbers do not
  terminal::Paint paint;
};

// A rectangle of cells, row by row, and where it begins on its sheet.
struct ShownCells {
  std::int32_t first_row = 1;
  std::int32_t first_column = 1;
  std::vector<std::vector<ShownCell>> rows;
};

// A rectangle of a sheet, counted from 1, both ends inside. Empty where the last row is 0.
struct ShownArea {
  std::int32_t first_row = 1;
  std::int32_t first_column = 1;
  std::int32_t last_row = 0;
  std::int32_t last_column = 0;

  bool IsEmpty() const { return last_row < first_row || last_column < first_column; }
  std::int32_t Rows() const { return last_row - first_row + 1; }
  std::int32_t Columns() const { return last_column - first_column + 1; }
};

// The area from A1 to the last row and the last column that hold a value.
ShownArea FilledArea(host::excel::Worksheet& sheet);

// The area of an address; of whole columns or rows the part that FilledArea reaches. Error 1004 for what is
// no address.
ShownArea AreaAt(host::excel::Worksheet& sheet, const std::string& address);

ShownCells ReadCells(host::excel::Worksheet& sheet, const ShownArea& area);

struct ShownComment {
  std::string address;  // "B3"
  std::vector<std::string> lines;
};

// The comments of an area's cells, row by row.
std::vector<ShownComment> ReadComments(host::excel::Worksheet& sheet, const ShownArea& area);

// "A" for 1.
std::string ColumnLetters(std::int32_t column);
// "A1:F20".
std::string AddressOf(const ShownArea& area);

}  // namespace mirelo::app
