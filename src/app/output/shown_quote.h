#pragma once

#include <string>
#include <vector>

#include "day/quote_rows.h"

namespace mirelo::app {

// A quote as tables in the terminal show it: prices and their changes with the decimal places of the
// settings, as their cells in the workbook do. `price_format` is cMirelo::DecimalPlacesFormat. What is no
// number stays as it is.
std::vector<std::string> ShownQuote(const std::vector<std::string>& columns, const day::QuoteRow& row,
                                    const std::string& price_format);

}  // namespace mirelo::app
