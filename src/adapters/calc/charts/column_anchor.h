#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>
#include <optional>

#include "adapters/calc/objects/document_sheet.h"
#include "adapters/calc/objects/interfaces.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

// Where a chart stands by the columns of its sheet. Columns that are inserted, deleted or resized to the left
// of the chart move it; those that it covers resize it. The office tracks which columns these are. Called
// within Document::Ask.
class ColumnAnchor {
 public:
  // Nothing on a sheet whose columns go from the right to the left, and for a chart that stands off them.
  static std::optional<ColumnAnchor> Of(DocumentSheet& sheet, const spreadsheet::ChartBox& place);

  // The chart's place when it was last anchored.
  const spreadsheet::ChartBox& place() const { return place_; }
  // Reads where the columns are now, moves the place with them and returns it. The office's exception when
  // one of the columns was deleted.
  const spreadsheet::ChartBox& Follow();

 private:
  using Column = Reference<css::beans::XPropertySet>;

  struct Edge {
    Column column;
    sal_Int32 at;  // where the column began at the last look

    Edge(DocumentSheet& sheet, sal_Int32 length);
  };

  ColumnAnchor(DocumentSheet& sheet, const spreadsheet::ChartBox& place);

  spreadsheet::ChartBox place_;
  Edge left_;
  Edge right_;
  sal_Int32 behind_left_;  // how far from its first column's beginning the chart begins
};

}  // namespace mirelo::calc
