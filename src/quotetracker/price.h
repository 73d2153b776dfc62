#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace mirelo::quotetracker {

// A price in ten-thousandths of the currency: exact sums and exact text, and fine enough for a currency pair.
using Price = std::int64_t;

inline constexpr Price kPriceUnit = 10'000;
inline constexpr Price kCent = 100;

inline double ToDouble(Price price) { return static_cast<double>(price) / static_cast<double>(kPriceUnit); }

// Writes a price with at least two decimals, and up to four where they are not 0: 26.50, -0.12, 1.2345.
// Returns the place behind what was written; kPriceWidth characters are room enough for any price.
inline constexpr std::size_t kPriceWidth = 22;
char* WritePrice(char* at, Price price);

// A price from text such as "26.5", "-0.12" or ".5". Nothing for other text, for a digit other than 0 behind
// the fourth decimal, and for more than twelve digits before the point.
std::optional<Price> ParsePrice(std::string_view text);

}  // namespace mirelo::quotetracker
