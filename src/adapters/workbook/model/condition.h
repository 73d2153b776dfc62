#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "adapters/workbook/rules.h"
#include "host/excel/constants.h"
#include "spreadsheet/area_set.h"
#include "spreadsheet/style.h"

namespace mirelo::workbook {

// What a conditional format changes of the style of a cell that meets its condition; the file format calls it
// a "dxf". What has the value of a new DifferentialFormat stays as it is.
struct DifferentialFormat {
  bool bold = false;
  bool italic = false;
  bool strikeout = false;
  std::uint8_t underline = 0;  // as FontStyle's
  Color color = kAutomatic;    // of the font
  FillStyle fill;
  BorderStyle border;
  std::string number_format;
  friend bool operator==(const DifferentialFormat&, const DifferentialFormat&) = default;
};

// A conditional format: what it changes of those cells of some areas whose values compare with one value, or
// two, as the operator says. The values are numbers, texts in quotation marks, or booleans, as formulas write
// them.
struct Condition {
  AreaSet areas;
  host::excel::XlFormatConditionOperator op = host::excel::xlEqual;
  std::string formula1;  // without a leading "="
  std::string formula2;  // empty for operators that compare with one value
  DifferentialFormat format;
  bool stop_if_true = false;  // later conditions of the cell do not count
};

// The conditional formats of a sheet, in order of priority: the first one counts most.
class Conditions {
 public:
  // Clients hold a condition whatever becomes of its cells.
  using List = std::vector<std::shared_ptr<Condition>>;

  const List& all() const { return list_; }
  // Those that reach at least one cell of the area.
  List Touching(const Area& area) const;

  std::shared_ptr<Condition> Add(Condition condition);
  // Takes the conditions away from the area's cells.
  void Clear(const Area& area);
  // Takes the area's cells out of the sheet; those below move up.
  void Delete(const Area& area);

 private:
  // Replaces the areas of each condition by change(areas), and forgets conditions without areas.
  template <class Change>
  void ChangeAreas(Change&& change);

  List list_;
};

}  // namespace mirelo::workbook
