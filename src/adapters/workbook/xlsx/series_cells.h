#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/xlsx/losses.h"

namespace mirelo::workbook {

// A series of a chart that was read, not yet bound to its cells: they may lie on a sheet that has not been
// read.
struct UnboundSeries {
  std::shared_ptr<Chart> chart;
  std::size_t index;
  std::string formula;  // empty when it has no cells
  std::string sheet;    // on which the chart lies
  std::string title;    // of the chart, for people
};

// Gives each series its cells, once all sheets have been read; `names` are those that the file gives the
// book's sheets. What is no row or column of one of them is a loss.
void BindSeries(const std::vector<UnboundSeries>& series, const Book& book,
                const std::vector<std::string>& names, Losses& losses);

}  // namespace mirelo::workbook
