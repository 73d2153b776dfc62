#pragma once

#include <string>
#include <vector>

#include "day/quote_value.h"

namespace mirelo::day {

// One value per column, in the order of the columns that it is read with; nothing where nothing is known.
using QuoteRow = std::vector<QuoteValue>;

// One row per ticker, in the order of the tickers.
using QuoteRows = std::vector<QuoteRow>;

// The row as texts for a person or another program, as QuoteValue::ToText has it.
std::vector<std::string> TextsOf(const QuoteRow& row);

// The columns of the quote table in its order, as the settings name them.
std::vector<std::string> VisibleColumns();

}  // namespace mirelo::day
