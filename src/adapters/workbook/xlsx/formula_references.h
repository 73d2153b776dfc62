#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"

namespace mirelo::workbook {

// Cells that a formula refers to.
struct CellsReference {
  std::string first_sheet;  // empty for the formula's own sheet
  std::string last_sheet;   // where it refers to a range of sheets; empty for one sheet
  Area area;
  // Which of its bounds move with the formula when it stands in another cell.
  bool moves_first_row = false;
  bool moves_first_column = false;
  bool moves_last_row = false;
  bool moves_last_column = false;

  bool Moves() const { return moves_first_row || moves_first_column || moves_last_row || moves_last_column; }
};

// What the result of a formula depends on, as far as its text tells.
struct FormulaReferences {
  std::vector<CellsReference> cells;
  std::vector<std::string> names;      // defined names, and tables
  std::vector<std::string> functions;  // each may be a defined name as well
  // Whether that is not all: its result may depend on any cell, or on the time.
  bool is_open = false;
};

// Reads a formula as files hold it: functions by their English names, XML entities resolved. The result may
// name too much and never too little; for a text that is no formula, or longer than any program takes as one,
// is_open is set. Takes time in proportion to the text.
FormulaReferences ReadFormula(std::string_view formula);

}  // namespace mirelo::workbook
