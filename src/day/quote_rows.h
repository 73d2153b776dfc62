#pragma once

#include <string>
#include <vector>

namespace mirelo::day {

// One text per column, in the order of the columns that it is read with. A text is empty where nothing is
// known.
using QuoteRow = std::vector<std::string>;

// One row per ticker, in the order of the tickers.
using QuoteRows = std::vector<QuoteRow>;

// The columns of the quote table in its order, as the settings name them.
std::vector<std::string> VisibleColumns();

}  // namespace mirelo::day
