#pragma once

#include <com/sun/star/sheet/XConditionalFormat.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/calc/objects/document_sheet.h"
#include "adapters/calc/objects/interfaces.h"
#include "host/excel/constants.h"
#include "spreadsheet/area_set.h"

namespace mirelo::calc {

// A condition on the values of cells, and the style of those that meet it.
struct SheetCondition {
  // Where the office keeps it: in several formats when it was laid on cells that had others already.
  struct Place {
    Reference<css::sheet::XConditionalFormat> format;
    sal_Int32 entry;
  };

  sal_Int32 op;  // a css::sheet::ConditionFormatOperator
  std::string formula;
  std::string formula2;
  std::string style;
  std::vector<Place> places;

  bool ComparesValues() const;
  // Error 1004 for a condition that does not compare values.
  host::excel::XlFormatConditionOperator Operator() const;
};

// The conditional formats of a sheet. The office keeps them as formats, each a list of conditions on some
// areas, of which the first that is met counts. The person's own colour scales and the like are no
// conditions, and are only touched where conditions are laid on their cells or taken away.
class SheetConditions {
 public:
  explicit SheetConditions(std::shared_ptr<DocumentSheet> sheet) : sheet_(std::move(sheet)) {}

  // Those that reach at least one cell of the area, from the first that is looked at to the last.
  std::vector<SheetCondition> Touching(const spreadsheet::Area& area) const;

  // For all cells of the area, behind those that they have.
  void Add(const spreadsheet::Area& area, host::excel::XlFormatConditionOperator op,
           const std::string& formula, const std::string& style) const;
  void Clear(const spreadsheet::Area& area) const;
  // When cells of `area` are deleted, the office loses track of conditions that share only some of its
  // columns. So those are split at the area's sides first.
  void CutBeside(const spreadsheet::Area& area) const;
  static void SetStyle(const SheetCondition& condition, const std::string& style);

 private:
  // What the office keeps together.
  struct Format {
    spreadsheet::AreaSet areas;
    std::vector<SheetCondition> conditions;
    bool has_others;  // colour scales and the like
  };

  std::vector<Format> Read() const;
  void Lay(const spreadsheet::AreaSet& areas, const std::vector<SheetCondition>& conditions) const;

  std::shared_ptr<DocumentSheet> sheet_;
};

}  // namespace mirelo::calc
