#pragma once

#include <cstdint>

namespace mirelo {

// How many tickers one request to QuoteTracker names at most: of GetLastQuote, and of the dialog's export to
// a portfolio. The contracts of cMirelo tell clients the same number.
inline constexpr std::int32_t kTickersPerRequest = 81;

}  // namespace mirelo
