#pragma once

#include <memory>
#include <string>

#include "adapters/workbook/model/book.h"

namespace mirelo::testing {

using workbook::Book;
using workbook::Chart;
using workbook::Sheet;

// A workbook with a sheet "Quotes_Vertical(MSFT)" of `rows` rows of prices (column D) and volumes (column E)
// from row 3 on, and no chart.
std::shared_ptr<Book> BookWithHistory(std::int32_t rows);

// Adds a chart of the sheet's cells `column`3 to the last row's.
Chart& AddChart(const std::shared_ptr<Sheet>& sheet, std::int32_t column, std::int32_t last_row);

// The two charts of a ticker as they are made beside a table: blue, with markers by the steps of the price.
void AddTickerCharts(const std::shared_ptr<Sheet>& sheet, std::int32_t rows);

// Every field of a chart on a line of its own, the cells of its series with the names of their sheets.
// Points that have nothing for themselves at the end are left out.
std::string Description(const Chart& chart);

}  // namespace mirelo::testing
