#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>
#include <optional>

#include "adapters/calc/objects/document_sheet.h"
#include "adapters/calc/objects/interfaces.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

// Where a chart stands by the columns of its sheet. Behind its first column it is moved with the columns in
// front of it, and it grows with those that it covers. The office keeps up which columns these are when some
// are inserted and deleted. Called within Document::Ask.
class ColumnAnchor {
 public:
  // Nothing on a sheet whose columns go from the right to the left, and for a chart that stands off them.
  static std::optional<ColumnAnchor> Of(DocumentSheet& sheet, const spreadsheet::ChartBox& place);

  // Of the chart, for which this was made.
  const spreadsheet::ChartBox& place() const { return place_; }
  // Where its columns have brought the chart since then, which is then what this is made for. The office
  // raises something when one of the columns was deleted.
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
  sal_Int32 behind_left_;  // how far the chart begins behind the beginning of its first column
};

}  // namespace mirelo::calc
