#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mirelo {

// Tickers as people write them: one, or several parted by commas or blanks ("GE, F T"). What
// stands between two of these is a ticker; there are none in a text without any.
std::vector<std::string> SplitTickers(std::string_view text);

// All tickers of several such texts.
std::vector<std::string> SplitTickers(const std::vector<std::string>& texts);

// Whether requests can name the ticker: it stands as it is between commas and brackets, so it holds none of
// them, no angle bracket and no blank.
bool IsTickerName(std::string_view ticker);

}  // namespace mirelo
